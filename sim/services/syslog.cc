// The system log of the simulated platform: syslog(3), and standard error as well when a test asks for it.
#include <syslog.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/text.h"

namespace ostrel::sim {
namespace {

bool mirror_to_stderr() {
  const char* setting = std::getenv("OSTREL_SYSLOG_STDERR");
  return setting && std::strcmp(setting, "1") == 0;
}

}  // namespace
}  // namespace ostrel::sim

void ux_syslog(int severity, const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
  if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, args);
  va_end(args);

  int priority = LOG_USER | (severity & LOG_PRIMASK);
  syslog(priority, "%s", text.c_str());
  if (ostrel::sim::mirror_to_stderr()) {
    bool ends_line = !text.empty() && text.back() == '\n';
    std::fprintf(stderr, "<%d>%s%s", severity & LOG_PRIMASK, text.c_str(), ends_line ? "" : "\n");
  }
}
