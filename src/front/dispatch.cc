// The dispatch table: one row per command code that has a view. Adding a view is adding a row.
#include "front/dispatch.h"

#include <array>

namespace {

struct ViewRow {
  uint32_t cmd;
  void (*run)(const ShowArgs&);
};

// A code without a row has no view yet and does nothing.
constexpr std::array<ViewRow, 0> kViews{};

}  // namespace

void ostrel_dispatch(const ShowArgs& args) {
  for (const ViewRow& row : kViews)
    if (row.cmd == args.cmd) row.run(args);
}
