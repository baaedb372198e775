// The 139 record descriptors: their identity, that their schemas parse and agree with their layout records,
// the layouts that are known exactly, the agreement of shared sub-types, and the registration protocol.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "access/pod_descriptors.h"
#include "platform/pod_schema.h"
#include "sim/codec/registry.h"

namespace {

using ostrel::pod::Kind;
using ostrel::pod::Schema;

// clang-format off
constexpr const char* kMribNames[] = {
    "mrib_timespec", "mrib_ctid_pod", "mrib_attrib_entry_pod", "mrib_attrib_intrf_pod", "mrib_intrf_pod",
    "mrib_group_rng_pod", "mrib_out_intrf_stat_pod", "mrib_incoming_rate_pod", "mrib_outgoing_rate_pod",
    "mrib_amt_route_summary_pod", "mrib_evpn_bkt_pod", "mrib_amt_intrf_pod", "mrib_amt_route_pod",
    "mrib_amt_gw_id_ex_pod", "mrib_amt_route_ex_pod", "mrib_route_pod", "mrib_amt_gw_active_route_pod",
    "mrib_amt_gw_pod", "mrib_amt_gw_ex_route_pod", "mrib_amt_gw_ex_pod", "mrib_amt_gw_summary_pod",
    "mrib_bvi_route_summ_pod", "mrib_bvi_intrf_pod", "mrib_bvi_mroute_pod", "mrib_bvi_route_pod",
    "mrib_bvi_interface_pod", "mrib_route_ole_pod", "mrib_db_summ_pod", "mrib_simple_filter_pod",
    "mrib_filter_pod", "mrib_client_pod", "mrib_nsf_pod", "mrib_iir_sub_node_pod", "mrib_iir_route_pod",
    "mrib_iir_label_pod", "mrib_iir_intf_pod", "mrib_hash_pod", "mrib_attr_stat_pod", "mrib_table_info_pod",
    "mrib_label_table_info_pod", "mrib_prim_tos_node_pod", "mrib_backup_tos_node_pod",
    "mrib_mpls_outinfos_pod", "mrib_mpls_forwarding_pod", "mrib_mpls_db_pod", "mrib_mpls_frr_ob_infos_pod",
    "mrib_mpls_frr_pod", "mrib_mpls_frr_summary_pod", "mrib_mpls_bkup_tun_pod", "mrib_mpls_bkup_pod",
    "mrib_mdt_node_pod", "mrib_tlc_mdt_pod", "mrib_tlc_pod", "mrib_rc_routedb_pod", "mrib_rc_eole_db_pod",
    "mrib_rc_mdt_pod", "mrib_cc_sg_pod", "mrib_cc_rt_sum_pod", "mrib_cc_rt_pod", "mrib_rc_ipc_pod",
    "mrib_mdt_routedb_pod", "mrib_mdt_ifh_pod", "mrib_lib_intf_pod", "mrib_lib_route_pod",
    "mrib_encapid_ole_pod", "mrib_encapid_node_pod", "mrib_encapid_tblid_pod", "mrib_encapid_pod",
    "mrib_encapid_summary", "mrib_spe_pod", "mrib_chkpt_table_stats", "mrib_chkpt_stats",
    "mrib_rpfid_spe_info", "mrib_rpfid_spe_summ_info", "mrib_nsr_end_info", "mrib_gw_id_pod",
    "mrib_nh_path_pod", "mrib_regdb_pod", "mrib_ole_pod", "mrib_tedb_lsp_pod", "mrib_tedb_pod",
    "mrib_vrf_pod", "mroutemib_tbl_sum", "mrib_fapid_pod", "mrib_cofo_pod", "lmrib_cofo_pod",
    "mrib_cofo_encap_pod", "mrib_cofo_summary_pod"};

constexpr const char* kMfwdNames[] = {
    "ipv4_mfwd_attrib_entry_pod", "ipv4_mfwd_attrib_intf_pod", "ipv4_mfwd_intrf_pod", "ipv4_mfwd_ctid_pod",
    "ipmc_err_flags_pod", "ipv4_mfwd_intrf_stat_pod", "ipv4_mfwd_route_pod", "ipv4_mfwd_route_rate_pod",
    "mfwd_oor_mode_pod", "ipv4_mfwd_svd_pending_pod", "ipv4_mfwd_intf_pod", "ipv4_mfwd_tunnel_intf_pod",
    "ipv4_mfwd_bundle_member_pod", "ipv4_mfwd_bundle_intf_pod", "ipv4_mfwd_intf_detail_pod",
    "ipv4_mfwd_nsf_pod", "ipv4_mfwd_route_summ_pod", "ipv4_mfwd_imdr_pod", "ipv4_mfwd_connection_pod",
    "ipv4_mfwd_counter_pod", "ipv4_mfwd_table_counters_pod", "ipv4_mfwd_download_pod",
    "ipv4_mfwd_netio_req_pod", "ipv4_mfwd_svd_pod", "ipv4_mfwd_table_pod", "ipv4_mfwd_encap_pod",
    "mfwd_stats_infra_gsp_iarm_pod", "mfwd_stats_infra_vellum_pod", "ipv4_mfwd_lsm_intf_pod",
    "ipv4_mfwd_regdb_lsm_pod", "ipv4_mfwd_regdb_te_pod", "ipv4_mfwd_regdb_gre_pod",
    "ipv4_mfwd_regdb_timofrr_pod", "ipv4_mfwd_regdb_nh_pod", "ipv4_mfwd_regdb_mofrr_prot_pod",
    "ipv4_mfwd_regdb_pod", "ipv4_mfwd_encap_gre_pod", "ipv4_mfwd_encap_timofrr_pod", "ipv4_mfwd_encap_nh_pod",
    "ipv4_mfwd_encap_mofrr_prot_pod", "ipv4_mfwd_encapleaf_pod", "ipv4_mfwd_encapid_pod",
    "mfwd_stats_infra_im_pod", "mfwd_stats_infra_aib_pod", "mfwd_bvi_route_summ_pod", "mfwd_bvi_intrf_pod",
    "mfwd_bvi_mroute_pod", "mfwd_bvi_route_pod", "mfwd_bvi_interface_pod", "mfwd_mdt_stats_pod",
    "mfwd_edm_mofrr_gid_entry_pod"};
// clang-format on

struct Group {
  const char* label;
  std::span<const pod_desc* const> descs;
  std::span<const char* const> names;
  uint32_t lib_version[2];
  const char* library;
};

const Group kGroups[] = {
    {"MRIB", ostrel_mrib_pods(), kMribNames, {7, 1}, "libmrib_pod_desc.dll"},
    {"MFWD", ostrel_mfwd_pods(), kMfwdNames, {3, 0}, "lib_ipv4_mfwd_pod_desc.dll"},
};

// The schema of a descriptor, parsed at run time; a failure names the type and where its text went wrong.
Schema parse_or_report(const pod_desc* desc, const char* text) {
  Schema s = ostrel::pod::parse_schema(text);
  EXPECT_TRUE(s.ok()) << desc->name << ": " << ostrel::pod::error_text(s.error) << " at " << s.error_pos
                      << " in \"" << text << "\"";
  return s;
}

// The field-offset table a layout entry must carry for type `t` of `s`.
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

std::vector<uint64_t> offsets_of(const pod_layout& entry, size_t count) {
  if (entry.offsets == nullptr) return {};
  return {entry.offsets, entry.offsets + count};
}

TEST(PodDescriptors, GroupsListTheirTypesInRegistrationOrderWithTheirLibrary) {
  for (const Group& g : kGroups) {
    ASSERT_EQ(g.descs.size(), g.names.size()) << g.label;
    for (size_t i = 0; i < g.descs.size(); ++i) {
      const pod_desc* d = g.descs[i];
      EXPECT_STREQ(d->name, g.names[i]) << g.label << " #" << i;
      EXPECT_EQ(d->version, 1u) << d->name;
      EXPECT_EQ(d->lib_version[0], g.lib_version[0]) << d->name;
      EXPECT_EQ(d->lib_version[1], g.lib_version[1]) << d->name;
      EXPECT_STREQ(d->library, g.library) << d->name;
      EXPECT_EQ(ostrel_find_pod_desc(g.names[i]), d) << d->name;
    }
  }
  EXPECT_EQ(ostrel_find_pod_desc("mrib_no_such_pod"), nullptr);
}

// Every layout record is what the layout rule makes of its schema, and the compact form describes the
// same layout as the full one.
TEST(PodDescriptors, LayoutRecordsFollowTheirSchemasInFullAndCompactForm) {
  for (const Group& g : kGroups) {
    for (const pod_desc* d : g.descs) {
      Schema full = parse_or_report(d, d->schema);
      Schema compact = parse_or_report(d, d->schema_compact);
      if (!full.ok() || !compact.ok()) continue;
      ASSERT_EQ(compact.type_count, full.type_count) << d->name;
      EXPECT_EQ(d->layout[0].number, static_cast<uint64_t>(full.type_count - 1)) << d->name;
      for (int t = 0; t < full.type_count; ++t) {
        std::vector<uint64_t> want = expected_offsets(full, t);
        const pod_layout& entry = d->layout[t];
        if (t > 0) {
          EXPECT_EQ(entry.number, full.types[t].number) << d->name << " entry " << t;
        }
        EXPECT_EQ(entry.size, full.types[t].size) << d->name << " entry " << t;
        EXPECT_EQ(offsets_of(entry, want.size()), want) << d->name << " entry " << t;
        EXPECT_EQ(compact.types[t].number, full.types[t].number) << d->name;
        EXPECT_EQ(compact.types[t].size, full.types[t].size) << d->name << " $" << full.types[t].number;
        EXPECT_EQ(expected_offsets(compact, t), want) << d->name << " $" << full.types[t].number;
      }
    }
  }
}

struct KnownLayout {
  const char* name;
  std::vector<pod_layout> entries;  // offsets compared through `tables`
  std::vector<std::vector<uint64_t>> tables;
  const char* compact;
};

TEST(PodDescriptors, KnownLayoutsHaveTheirStatedSizesOffsetsAndCompactForms) {
  const KnownLayout known[] = {
      {"mrib_timespec", {{0, 8, nullptr}}, {{0, 4}}, "$66=DD;"},
      {"mrib_group_rng_pod",
       {{2, 32, nullptr}, {59, 16, nullptr}, {60, 24, nullptr}},
       {{0, 24}, {}, {0, 8}},
       "$73=$60.D;$59=16x%s;$60=?(,0:N,1:$59.);"},
      {"mrib_client_pod",
       {{0, 104, nullptr}},
       {{0, 4, 8, 12, 16, 20, 24, 32, 40, 48, 56, 60, 64, 72, 80, 88, 92, 96}},
       "$98=DDbDeeDPHssDDba(e)DDD;"},
      {"ipv4_mfwd_ctid_pod",
       {{1, 16, nullptr}, {53, 8, nullptr}},
       {{0, 4, 8}, {0, 4}},
       "$54=eD$53.;$53=?(,1:N,0:D,3:v);"},
  };
  for (const KnownLayout& k : known) {
    const pod_desc* d = ostrel_find_pod_desc(k.name);
    ASSERT_NE(d, nullptr) << k.name;
    EXPECT_STREQ(d->schema_compact, k.compact);
    for (size_t i = 0; i < k.entries.size(); ++i) {
      EXPECT_EQ(d->layout[i].number, k.entries[i].number) << k.name << " entry " << i;
      EXPECT_EQ(d->layout[i].size, k.entries[i].size) << k.name << " entry " << i;
      EXPECT_EQ(offsets_of(d->layout[i], k.tables[i].size()), k.tables[i]) << k.name << " entry " << i;
    }
  }
  // The group range's byte array has no offset table at all.
  EXPECT_EQ(ostrel_find_pod_desc("mrib_group_rng_pod")->layout[1].offsets, nullptr);
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

// Numbers the groups share between record types: a record type embedded elsewhere keeps its own number.
// (The compact forms above check four more.)
TEST(PodDescriptors, SharedTypesKeepTheirNumbers) {
  // clang-format off
  const std::pair<const char*, uint64_t> numbered[] = {
      {"mrib_ctid_pod", 69}, {"mrib_attrib_entry_pod", 70}, {"mrib_attrib_intrf_pod", 71},
      {"mrib_route_ole_pod", 94}, {"mrib_db_summ_pod", 95}, {"mrib_mdt_node_pod", 118}, {"mrib_fapid_pod", 151},
      {"ipv4_mfwd_attrib_entry_pod", 48}, {"ipv4_mfwd_attrib_intf_pod", 49}, {"ipmc_err_flags_pod", 55}};
  // clang-format on
  for (const auto& [name, number] : numbered) {
    Schema s = ostrel::pod::parse_schema(ostrel_find_pod_desc(name)->schema);
    EXPECT_EQ(s.record().number, number) << name;
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
    std::span<const char* const> names =
        c.mfwd ? std::span<const char* const>(kMfwdNames) : std::span<const char* const>(kMribNames);
    ostrel::sim::registry_reset(c.fail_call, kCode);
    cerr_t rc = c.mfwd ? ostrel_register_mfwd_pods(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)
                       : ostrel_register_mrib_pods(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(rc, c.fail_call < 0 ? kCerrOk : kCode) << c.label;
    std::vector<std::string> log{"start"};
    for (size_t i = 0; i < std::min(c.registered, names.size()); ++i)
      log.push_back(std::string("register ") + names[i]);
    if (c.last != nullptr) log.push_back(c.last);
    EXPECT_EQ(ostrel::sim::registry_log().calls, log) << c.label;
  }
}

}  // namespace
