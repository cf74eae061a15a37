/* A simulated router in memory: all of sim/ but its files, its clock and its processes, which fuzz/sim_router.cpp
 * stands in for. Nothing waits, nothing is started, and no file of this machine is written. */
#pragma once

#include "sim/router.h"

/* A new router, switched on and alone, in the place of the last; a reference to that one is to this one then. */
sim::Router &renew_sim_router();

/* Lets the router's own thread do what it was asked to: to start the router again. */
void run_sim_router();

/* How often a file of the router's was written or removed. */
uint64_t sim_router_writes();
