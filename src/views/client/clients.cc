// The client connections view (-cmd 1): which collection -f and -n name, the header, the client lines and
// the filter blocks. The platform's printers list, decode and release; this file only prints. A table or
// item that is not there makes the printer fail, and the view then prints nothing more.
//
// Keyword runs read no -d, bind no interface-name server and never set -D: interface handles print as
// "0x%x", and the attributes that count only under -D never make a filter node worth showing.
#include "views/client/clients.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/mrib_utl.h"
#include "platform/text.h"
#include "views/route/route_flags.h"

namespace {

// ---- Paths -----------------------------------------------------------------------------------------------

enum class NameForm { kNone, kName, kNameInstance };

NameForm name_form(const OstrelClientName& client) {
  if (client.name == nullptr) return NameForm::kNone;
  return client.instance == nullptr ? NameForm::kName : NameForm::kNameInstance;
}

// The view's own path buffer; a path too long for it is refused.
char client_path[128];

struct ClientPath {
  bool filter;
  NameForm form;
  bool single_item;
  bool (*build)(const OstrelClientName& client);
};

// A client named without its instance is listed from the collection keyed by name; the filters' one has no
// closing slash in its path.
constexpr ClientPath kPaths[] = {
    {false, NameForm::kNone, false,
     [](const OstrelClientName&) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/", "process/clients-id");
     }},
    {false, NameForm::kName, false,
     [](const OstrelClientName& q) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/%s/", "process/clients-id-clntname",
                                   q.name.get());
     }},
    {false, NameForm::kNameInstance, true,
     [](const OstrelClientName& q) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/%s,%s", "process/clients-id",
                                   q.name.get(), q.instance.get());
     }},
    {true, NameForm::kNone, false,
     [](const OstrelClientName&) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/", "process/clients-filter");
     }},
    {true, NameForm::kName, false,
     [](const OstrelClientName& q) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/%s",
                                   "process/clients-filter-clntname", q.name.get());
     }},
    {true, NameForm::kNameInstance, true,
     [](const OstrelClientName& q) {
       return ostrel_build_path_in(client_path, sizeof client_path, "%s/%s,%s", "process/clients-filter",
                                   q.name.get(), q.instance.get());
     }},
};

// ---- Header and client lines -----------------------------------------------------------------------------

void print_header(const ClientsKeywords* keywords) {
  if (keywords->detail) {
    ostrel_outf("\n%-15s %-8s %-8s %-6s %-8s %-12s %-12s %-6s %s\n", "client", "ccbid", "cltid", "active",
                "tb_count", "rd_state", "type", "parent", "uptime");
  } else {
    ostrel_out("\nIP MRIB client-connections\n");
  }
}

struct Label {
  char text[32];
};

// "name:instance", cut to 31 characters. An absent name or instance reads as the empty text.
Label client_label(const char* name, const char* instance) {
  Label label;
  std::snprintf(label.text, sizeof label.text, "%s:%s", name != nullptr ? name : "",
                instance != nullptr ? instance : "");
  return label;
}

const char* true_false(uint32_t value) {
  return value ? "T" : "F";
}

// The duration text of an uptime in seconds. A value beyond 32 bits is no uptime a server can have had; it
// reads as one the duration text cannot show rather than as the small value its low bits would give.
const char* uptime_text(uint64_t seconds) {
  const char* text = seconds <= UINT32_MAX ? sprint_dhms(static_cast<uint32_t>(seconds)) : nullptr;
  return text != nullptr ? text : "??:??:??";
}

void print_client(const mrib_client_pod& client, const ClientsKeywords* keywords) {
  Label label = client_label(client.ClientName, client.ClientInstanceID);
  if (!keywords->detail && !keywords->private_fields) {
    ostrel_outf("%-17s (client id %d)\n", label.text, static_cast<int>(client.ClientConnectionID));
    return;
  }
  ostrel_outf("%-15s %-8d %-8d %-6s %-8d %-12s %-12s %-6d %s\n", label.text,
              static_cast<int>(client.ClientConnectionID), static_cast<int>(client.ClientID),
              true_false(client.IsActive), static_cast<int>(client.RegisteredTableCount),
              mrib_client_rd_state_to_str(static_cast<uint32_t>(client.ClientReadState)),
              mrib_clt_type_to_str(static_cast<uint32_t>(client.ClientType)),
              static_cast<int>(client.ParentID), uptime_text(client.ClientUptimeInSecs));
  ostrel_outf("   NSF Capable: %s, Purge: %d sec, Purge Remain: %d sec\n", true_false(client.NSFCapable),
              static_cast<int>(client.PurgeDelaySecs), static_cast<int>(client.PurgeRemainSecs));
  ostrel_outf("   Resync: %d sec, NSF Restart: %d sec, NSF Recovery: %d sec\n",
              static_cast<int>(client.ResyncTimeSecs), static_cast<int>(client.NSFRestartTimeSecs),
              static_cast<int>(client.NSFRecoveryTimeSecs));
  if (client.NSFInterest.count == 0) return;
  ostrel_out("   NSF Interest: ");
  for (uint64_t i = 0; i < client.NSFInterest.count; ++i) {
    if (i != 0) ostrel_out(", ");
    ostrel_out(mrib_clt_type_to_str(static_cast<uint32_t>(client.NSFInterest.data[i])));
  }
  ostrel_out("\n");
}

// ---- Filter blocks ---------------------------------------------------------------------------------------

bool node_is_empty(const mrib_simple_filter_pod& node) {
  return !ostrel_entry_flags_any(&node.EntryAttributes) &&
         !ostrel_intf_flags_any(&node.InterfaceAttributes) && node.IncludeGroups.count == 0 &&
         node.ExcludeGroups.count == 0 && node.IncludeInterfaces.count == 0 &&
         node.ExcludeInterfaces.count == 0;
}

void print_groups(const char* side, const pod_array<mrib_group_rng_pod>& groups) {
  for (uint64_t i = 0; i < groups.count; ++i) {
    const mrib_group_rng_pod& group = groups.data[i];
    // A host-length prefix (or a longer one, of a group that is not IPv4) is the group itself.
    if (group.GroupPrefixLength < 32) {
      ostrel_outf("      %s %s/%u\n", side, ostrel_addr_text(&group.GroupPrefix), group.GroupPrefixLength);
    } else {
      ostrel_outf("      %s %s\n", side, ostrel_addr_text(&group.GroupPrefix));
    }
  }
}

void print_interfaces(const char* side, const pod_array<uint32_t>& handles) {
  for (uint64_t i = 0; i < handles.count; ++i) {
    uint32_t handle = handles.data[i];
    ostrel_outf("      %s %.79s\n", side, handle == 0 ? "All" : ostrel_ifh_name(handle, 0).data());
  }
}

void print_node(const char* kind, bool temporary, const mrib_simple_filter_pod& node) {
  ostrel_outf("  %s filter%s:\n", kind, temporary ? " (temporary diff)" : "");
  char flags[128];
  if (ostrel_fmt_entry_flags(flags, sizeof flags, &node.EntryAttributes) > 0)
    ostrel_outf("    entry attributes: %s\n", flags);
  if (ostrel_fmt_intf_flags(flags, sizeof flags, &node.InterfaceAttributes) > 0)
    ostrel_outf("    interface attributes: %s\n", flags);
  if (node.IncludeGroups.count != 0 || node.ExcludeGroups.count != 0) {
    ostrel_out("    groups:\n");
    print_groups("include", node.IncludeGroups);
    print_groups("exclude", node.ExcludeGroups);
  }
  if (node.IncludeInterfaces.count != 0 || node.ExcludeInterfaces.count != 0) {
    ostrel_out("    interfaces:\n");
    print_interfaces("include", node.IncludeInterfaces);
    print_interfaces("exclude", node.ExcludeInterfaces);
  }
}

// The standing filter and its temporary differences. An empty node ends the chain: what follows it is not
// in force.
void print_chain(const char* kind, const mrib_simple_filter_pod* standing) {
  for (const mrib_simple_filter_pod* node = standing; node != nullptr && !node_is_empty(*node);
       node = node->next) {
    print_node(kind, node != standing, *node);
  }
}

void print_filter(const mrib_filter_pod& filter, const ClientsKeywords* keywords) {
  // Under -detail the column header stands above the blocks instead of their labels.
  if (!keywords->detail) {
    Label label = client_label(filter.ClientName, filter.ClientInstanceID);
    ostrel_outf("%-17s (client id %d)\n", label.text, static_cast<int>(filter.ClientConnectionID));
  }
  print_chain("interest", filter.FilterInterest);
  print_chain("ownership", filter.FilterOwned);
  ostrel_out("\n");
}

// ---- The view --------------------------------------------------------------------------------------------

template <typename Record>
void show(const ClientPath& row, const ShowCallbacks<Record, const ClientsKeywords>& callbacks) {
  // The printers' status is not examined: a client or collection that is not there shows only as silence.
  if (row.single_item) {
    (void)ostrel_show_item(ostrel_root_handle, client_path, callbacks);
  } else {
    (void)ostrel_show_table(ostrel_root_handle, client_path, callbacks);
  }
}

}  // namespace

void ostrel_kw_clients_view(const ClientsKeywords& keywords) {
  const OstrelClientName client = ostrel_client_name(keywords.name_given ? keywords.name : nullptr);
  const bool filter = keywords.filter != 0;
  const NameForm form = name_form(client);
  const ClientPath* row = std::find_if(
      std::begin(kPaths), std::end(kPaths),
      [&](const ClientPath& candidate) { return candidate.filter == filter && candidate.form == form; });
  if (!row->build(client)) return;
  if (filter) {
    show(*row, ShowCallbacks<mrib_filter_pod, const ClientsKeywords>{print_header, print_filter, &keywords});
  } else {
    show(*row, ShowCallbacks<mrib_client_pod, const ClientsKeywords>{print_header, print_client, &keywords});
  }
}
