// Node and forwarding-processor names of the simulated platform, from the root's inventory.
#include "platform/naming.h"

#include <string>

#include "platform/text.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"

namespace ostrel::sim {
namespace {

cerr_t write_name(const std::string* name, char* buffer, uint32_t size) {
  if (!buffer || size == 0) return kBadArgument;
  if (!name) {
    buffer[0] = '\0';
    return kUnknownIdentifier;
  }
  sstrncpy(buffer, name->c_str(), size);
  return kCerrOk;
}

}  // namespace
}  // namespace ostrel::sim

cerr_t nodeid_to_str_external(uint32_t node_id, char* buffer, uint32_t size) {
  return ostrel::sim::write_name(ostrel::sim::node_name_of(node_id), buffer, size);
}

cerr_t fapid_to_str_external(uint32_t fapid, char* buffer, uint32_t size) {
  return ostrel::sim::write_name(ostrel::sim::fapid_name_of(fapid), buffer, size);
}
