// The router's file system in the simulation: router paths lie below the root directory.
#include "platform/fs.h"

#include <unistd.h>

#include <cerrno>
#include <string>

#include "sim/root.h"

int fs_access(const char* path, int mode) {
  if (!path || path[0] != '/') {
    errno = EINVAL;
    return -1;
  }
  return access(ostrel::sim::root_path(path).c_str(), mode);
}
