// A function that lets `draw` run before the browser's next picture, once, however often it is asked.
export function oncePerPicture(draw) {
  let asked = false;
  return () => {
    if (asked) return;
    asked = true;
    requestAnimationFrame(() => {
      asked = false;
      draw();
    });
  };
}
