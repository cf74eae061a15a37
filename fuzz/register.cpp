/* The output of the tool that reads the switch's register. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "status/wan.h"

void fuzz(Input &in)
{
    FuzzRouter router;
    router.output = in.rest();
    uint8_t state = 0xFF;
    const int found = get_wan_port_status(&state);
    require(state <= 3, "a state is one of four");
    require(found == 1 || (found == 0 && state == 0), "without a register there is no link");
}
