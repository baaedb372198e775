// The platform's option scanner: single-letter options in the POSIX manner, over a vector it never reorders.
#pragma once

// Shared with the scanner: `optind` is the index of the next element to scan (1 at start; the program may
// move it itself, for instance to consume an extra word after an option; setting it to 0 starts a fresh scan
// from element 1); `optarg` is the argument of the option last returned; `optopt` is the
// option character that was refused. These are the C library's own objects.
extern "C" {
extern char* optarg;
extern int optind;
extern int optopt;
}

// Returns the next option character of `argv` as described by `optstring` (a letter or digit followed by
// ":" takes an argument, in the rest of the same word or in the next word), or -1 at the end: at the end of
// the vector, at the first element that is not an option ("x", "-"), or after "--" (which it steps over).
// Letters may be grouped ("-dr"); "-standby" is -s with the argument "tandby". An unknown letter gives '?'
// with `optopt` set; a missing argument gives '?' as well, or ':' when `optstring` begins with ":". It
// prints nothing: the program decides what a refused option means.
int _getopt(int argc, char* const argv[], const char* optstring);
