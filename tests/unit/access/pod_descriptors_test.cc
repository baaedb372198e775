// The 139 record descriptors: their identity, that their schemas parse and their compact forms agree with
// them, the compact forms that are known exactly, the agreement of shared sub-types, and the registration
// protocol.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "access/pod_descriptors.h"
#include "platform/pod_schema.h"
#include "sim/codec/registry.h"

namespace {

using ostrel::pod::Kind;
using ostrel::pod::Schema;

struct Group {
  const char* label;
  std::span<const pod_desc* const> descs;
  size_t count;
  uint32_t lib_version[2];
  const char* library;
};

const Group kGroups[] = {
    {"MRIB", ostrel_mrib_pods(), 88, {7, 1}, "libmrib_pod_desc.dll"},
    {"MFWD", ostrel_mfwd_pods(), 51, {3, 0}, "lib_ipv4_mfwd_pod_desc.dll"},
};

// The schema of a descriptor, parsed at run time; a failure names the type and where its text went wrong.
Schema parse_or_report(const pod_desc* desc, const char* text) {
  Schema s = ostrel::pod::parse_schema(text);
  EXPECT_TRUE(s.ok()) << desc->name << ": " << ostrel::pod::error_text(s.error) << " at " << s.error_pos
                      << " in \"" << text << "\"";
  return s;
}

// The field-offset table that the layout rule gives type `t` of `s`.
std::vector<uint64_t> expected_offsets(const Schema& s, int t) {
  const ostrel::pod::TypeDef& type = s.types[t];
  std::vector<uint64_t> out;
  if (type.is_union) return {0, s.union_of(type).value_offset};
  if (type.raw_bytes) return out;
  for (int i = type.first_field; i < type.first_field + type.field_count; ++i) {
    out.push_back(s.fields[i].offset);
    if (s.fields[i].kind == Kind::kArray) out.push_back(s.fields[i].offset + 8);
  }
  return out;
}

TEST(PodDescriptors, GroupsHoldTheirTypesWithTheirLibraryAndEachIsFoundByName) {
  for (const Group& g : kGroups) {
    EXPECT_EQ(g.descs.size(), g.count) << g.label;
    for (const pod_desc* d : g.descs) {
      EXPECT_EQ(d->version, 1u) << d->name;
      EXPECT_EQ(d->lib_version[0], g.lib_version[0]) << d->name;
      EXPECT_EQ(d->lib_version[1], g.lib_version[1]) << d->name;
      EXPECT_STREQ(d->library, g.library) << d->name;
      EXPECT_EQ(ostrel_find_pod_desc(d->name), d) << d->name;
    }
  }
  EXPECT_EQ(ostrel_find_pod_desc("mrib_no_such_pod"), nullptr);
}

// The compact form describes the same types, sizes and offsets as the full schema. (That the layout records
// follow the full schema, the codec checks whenever it compiles a descriptor, as the demo root's build does.)
TEST(PodDescriptors, CompactFormsDescribeTheLayoutsOfTheirFullSchemas) {
  for (const Group& g : kGroups) {
    for (const pod_desc* d : g.descs) {
      Schema full = parse_or_report(d, d->schema);
      Schema compact = parse_or_report(d, d->schema_compact);
      if (!full.ok() || !compact.ok()) continue;
      ASSERT_EQ(compact.type_count, full.type_count) << d->name;
      for (int t = 0; t < full.type_count; ++t) {
        const std::string where = std::string(d->name) + " $" + std::to_string(full.types[t].number);
        EXPECT_EQ(compact.types[t].number, full.types[t].number) << where;
        EXPECT_EQ(compact.types[t].size, full.types[t].size) << where;
        EXPECT_EQ(expected_offsets(compact, t), expected_offsets(full, t)) << where;
      }
    }
  }
}

// The compact forms that the records' fingerprints hash: type numbers, letters, hints and case order.
TEST(PodDescriptors, KnownTypesHaveTheirCompactForms) {
  const std::pair<const char*, const char*> known[] = {
      {"mrib_timespec", "$66=DD;"},
      {"mrib_group_rng_pod", "$73=$60.D;$59=16x%s;$60=?(,0:N,1:$59.);"},
      {"mrib_client_pod", "$98=DDbDeeDPHssDDba(e)DDD;"},
      {"ipv4_mfwd_ctid_pod", "$54=eD$53.;$53=?(,1:N,0:D,3:v);"},
  };
  for (const auto& [name, compact] : known) {
    const pod_desc* d = ostrel_find_pod_desc(name);
    ASSERT_NE(d, nullptr) << name;
    EXPECT_STREQ(d->schema_compact, compact);
  }
}

// A sub-type number means one type throughout its group, so each definition must read the same everywhere.
TEST(PodDescriptors, EachTypeNumberHasOneDefinitionPerGroup) {
  for (const Group& g : kGroups) {
    std::map<std::string, std::pair<std::string, const char*>> seen;  // "$N=" -> definition, first schema
    for (const pod_desc* d : g.descs) {
      std::string_view text = d->schema;
      for (size_t start = 0; start < text.size();) {
        size_t end = text.find(';', start);
        ASSERT_NE(end, std::string_view::npos) << d->name;
        std::string definition(text.substr(start, end + 1 - start));
        std::string number = definition.substr(0, definition.find('=') + 1);
        auto [it, fresh] = seen.try_emplace(number, definition, d->name);
        EXPECT_TRUE(fresh || it->second.first == definition)
            << g.label << " " << number << " in " << d->name << ":\n  " << definition << "\nbut in "
            << it->second.second << ":\n  " << it->second.first;
        start = end + 1;
      }
    }
  }
}

// The registry logs start, the registers up to a failure, then end, or abort after a failed register.
TEST(PodDescriptors, RegistrationRunsStartRegistersEndAndStopsAtTheFirstFailure) {
  constexpr cerr_t kCode = 0x40b0ff00;
  constexpr size_t kAll = SIZE_MAX;
  const struct {
    const char* label;
    bool mfwd;
    int fail_call;  // 0 is start, 1 the first register
    size_t registered;
    const char* last;
  } cases[] = {
      {"MRIB in full", false, -1, kAll, "end"},
      {"MFWD in full", true, -1, kAll, "end"},
      {"fifth MRIB register fails", false, 5, 5, "abort"},
      {"first MFWD register fails", true, 1, 1, "abort"},
      {"start fails", false, 0, 0, nullptr},
      {"end fails", true, 52, kAll, "end"},
  };
  for (const auto& c : cases) {
    std::span<const pod_desc* const> descs = c.mfwd ? ostrel_mfwd_pods() : ostrel_mrib_pods();
    ostrel::sim::registry_reset(c.fail_call, kCode);
    cerr_t rc = c.mfwd ? ostrel_register_mfwd_pods(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)
                       : ostrel_register_mrib_pods(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(rc, c.fail_call < 0 ? kCerrOk : kCode) << c.label;
    std::vector<std::string> log{"start"};
    for (size_t i = 0; i < std::min(c.registered, descs.size()); ++i)
      log.push_back(std::string("register ") + descs[i]->name);
    if (c.last != nullptr) log.push_back(c.last);
    EXPECT_EQ(ostrel::sim::registry_log().calls, log) << c.label;
  }
}

}  // namespace
