// The router's file system as the program sees it: whether a router file can be used.
#pragma once

// access(2) for the absolute router path `path` ("/pkg/lib/libvellum.so"), with the same `mode` bits (R_OK,
// ...): 0 when allowed, else -1 with errno set (EINVAL for a path that is not absolute). Messages keep naming
// the router path; where it really lies is the platform's affair.
int fs_access(const char* path, int mode);
