#include "sim/codec/registry.h"

namespace ostrel::sim {
namespace {

struct Registry {
  RegistryLog log;
  int fail_call = -1;
  cerr_t code = 0;
};

Registry& registry() {
  static Registry r;
  return r;
}

cerr_t record(std::string call) {
  Registry& r = registry();
  int index = static_cast<int>(r.log.calls.size());
  r.log.calls.push_back(std::move(call));
  return index == r.fail_call ? r.code : kCerrOk;
}

}  // namespace

void registry_reset(int fail_call, cerr_t code) {
  registry() = Registry{RegistryLog{}, fail_call, code};
}

const RegistryLog& registry_log() {
  return registry().log;
}

}  // namespace ostrel::sim

cerr_t pod_register_start(const void*, const void*, const void*, const void*, const void*, const void*) {
  return ostrel::sim::record("start");
}

cerr_t pod_register(const pod_desc* desc) {
  return ostrel::sim::record(std::string("register ") + desc->name);
}

cerr_t pod_register_end() {
  return ostrel::sim::record("end");
}

cerr_t pod_register_abort() {
  return ostrel::sim::record("abort");
}
