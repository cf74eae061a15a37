# What breaks on a router, and that the daemon goes on. Sourced after world.sh.

DRIVER=/sys/module/lcd_sink/parameters
RECORD=/tmp/lcd/lcd_debug_process
TWO_STEPS=135 # ticks in which the splash draws three pictures when it starts, two or three later

# No room for a byte, nor for an empty file.
fill_tmp() {
    dd if=/dev/zero of=/tmp/full bs=64k
    local i=0
    while [ $i -lt 100 ] && touch /tmp/full.$i; do i=$((i + 1)); done
} > /dev/null 2>&1

frames() { cat $DRIVER/accepted; }
messages() { wc -l < $MESSAGES; }

# fault NAME CAUSE REMEDY FRAMES MESSAGE: a fresh daemon meets CAUSE, draws at least (with 0: exactly) FRAMES
# pictures and prints MESSAGE first (without pictures, nothing else); after REMEDY it draws and prints nothing more.
fault() {
    local name=$1 cause=$2 remedy=$3 drawn=$4 message=$5 before printed
    say "$name"
    eval "$cause"
    before=$(frames)
    start_daemon
    sleep_ticks $TWO_STEPS
    if [ $drawn = 0 ]; then
        check "no frame comes" [ $(frames) = $before ]
        check "each time it says: $message" [ "$(uniq $MESSAGES)" = "$message" -a $(messages) -ge 3 ]
    else
        check "frames come" [ $(frames) -ge $((before + drawn)) ]
        check "it says: $message" [ "$(head -n 1 $MESSAGES)" = "$message" ]
    fi
    eval "$remedy"
    before=$(frames)
    printed=$(messages)
    sleep_ticks $TWO_STEPS
    check "afterwards frames come" [ $(frames) -ge $((before + 2)) ]
    check "and no more messages" [ $(messages) = $printed ]
    stop_daemon
}

# What cannot be seen to run is started again each minute.
without_proc() {
    say "no /proc"
    rm -f $RECORD
    local before=$(frames)
    umount /proc
    start_daemon
    sleep_ticks 1220
    check "frames come" [ $(frames) -ge $((before + 12)) ]
    check "both companions were started twice" [ "$(wc -l < $RECORD)" = 4 ]
    mount -t proc none /proc
    sleep_ticks 610
    check "afterwards they are seen" [ "$(wc -l < $RECORD)" = 4 ]
    check "and it printed nothing" [ $(messages) = 0 ]
    stop_daemon
}

all_faults() {
    fault "no driver" "echo N > $DRIVER/present" "echo Y > $DRIVER/present" \
        0 "write_lcd_data: can not create a netlink socket"
    fault "a lock file left behind" "touch /tmp/lcd/lcd_wp" "rm /tmp/lcd/lcd_wp" \
        0 "write_lcd_data: write protect check failed, return"
    fault "a read-only /tmp" "mount -o remount,ro /tmp" "mount -o remount,rw /tmp" \
        0 "write_lcd_data: write protect failed, return"
    fault "a full /tmp" fill_tmp "rm /tmp/full*" \
        0 "write_lcd_data: write protect failed, return"
    fault "no assets" "mv /sbin/lcd_ml /sbin/away" "mv /sbin/away /sbin/lcd_ml" \
        3 "no bitmap for icon_tarvex file name /sbin/lcd_ml/_auto_bitmap_/ICON_TARVEX"
    without_proc
}
