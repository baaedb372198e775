// The process-wide switches of a run, set once by the option loop and read by views and helpers anywhere.
#pragma once

#include <cstdint>

extern uint8_t ostrel_debug;            // -d: argument dump, bind points, error texts after "No MRIB" lines
extern uint8_t ostrel_private;          // -P: the server's internal fields are printed
extern uint8_t ostrel_platform_detail;  // -D: platform data in routes, clients and flag texts
extern uint8_t ostrel_standby;          // -standby: read the standby server's tree
