// The NSF view: the state line and lifetime for everyone, the trigger history under -detail, and the
// server's own bookkeeping (IP NSF, connect timer, counters, LMRIB client sets) under -private.
#include "views/client/nsf.h"

#include <cstdint>
#include <iterator>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/text.h"

namespace {

constexpr char kNsfPath[] = "process/nsf";

// One trigger's history line: when it last fired as a calendar time, and its seconds value.
struct EventLine {
  const char* label;
  uint64_t mrib_nsf_pod::*when;
  uint32_t mrib_nsf_pod::*seconds;
};

// The lines follow the display's order, not the record's: the label triggers are listed TE first, although
// the record holds mLDP's fields first.
constexpr EventLine kEventLines[] = {
    {"Last NSF On triggered", &mrib_nsf_pod::LastNSFOn, &mrib_nsf_pod::LastNSFOnSec},
    {"Last NSF Off triggered", &mrib_nsf_pod::LastNSFOff, &mrib_nsf_pod::LastNSFOffSec},
    {"Last NSF ICD Notification sent", &mrib_nsf_pod::LastICDNotifSent, &mrib_nsf_pod::LastICDNotifSentSec},
    {"Last Remote NSF On triggered", &mrib_nsf_pod::LastRemoteNSFOn, &mrib_nsf_pod::LastRemoteNSFOnSec},
    {"Last Remote NSF Off triggered", &mrib_nsf_pod::LastRemoteNSFOff, &mrib_nsf_pod::LastRemoteNSFOffSec},
    {"Last Label TE NSF On triggered", &mrib_nsf_pod::LastLabelTeNSFOn, &mrib_nsf_pod::LastLabelTeNSFOnSec},
    {"Last Label TE NSF Off triggered", &mrib_nsf_pod::LastLabelte_NSFOff,
     &mrib_nsf_pod::LastLabelte_NSFOffSec},
    {"Last Label mLDP NSF On triggered", &mrib_nsf_pod::LastLabelMldpNSFOn,
     &mrib_nsf_pod::LastLabelMldpNSFOnSec},
    {"Last Label mLDP NSF Off triggered", &mrib_nsf_pod::LastLabelMldpNSFOff,
     &mrib_nsf_pod::LastLabelMldpNSFOffSec},
    {"Last Label PIM NSF On triggered", &mrib_nsf_pod::LastLabelPimNSFOn,
     &mrib_nsf_pod::LastLabelPimNSFOnSec},
    {"Last Label PIM NSF Off triggered", &mrib_nsf_pod::LastLabelPimNSFOff,
     &mrib_nsf_pod::LastLabelPim_NSFOffSec},
    {"Last Label PIM6 NSF On triggered", &mrib_nsf_pod::LastLabelPim6NSFOn,
     &mrib_nsf_pod::LastLabelPim6NSFOnSec},
    {"Last Label PIM6 NSF Off triggered", &mrib_nsf_pod::LastLabelPim6_NSFOff,
     &mrib_nsf_pod::LastLabelPim6_NSFOffSec},
    {"Last Label KVR NSF On triggered", &mrib_nsf_pod::LastLabelKVRNSFOn,
     &mrib_nsf_pod::LastLabelKVRNSFOnSec},
    {"Last Label KVR NSF Off triggered", &mrib_nsf_pod::LastLabelKVR_NSFOff,
     &mrib_nsf_pod::LastLabelKVRNSFOffSec},
};
static_assert(std::size(kEventLines) == 15);

// The LMRIB client types, in the order their words are printed; other bits print nothing.
struct ClientTypeWord {
  uint32_t bit;
  const char* word;
};
constexpr ClientTypeWord kClientTypeWords[] = {
    {0x80, "LDP "}, {0x40, "RSVP_TE "}, {0x100, "PIM "}, {0x200, "PIM6 "}, {0x800, "KVR "},
};

// All ones means the event never happened. A value that is not a duration at all (top bit set) has no
// text; "??" says so rather than leaving a gap after the comma.
const char* seconds_text(uint32_t seconds) {
  if (seconds == UINT32_MAX) return "never";
  const char* text = sprint_dhms(seconds);
  return text != nullptr ? text : "??";
}

const char* duration_or_unknown(uint32_t seconds) {
  const char* text = sprint_dhms(seconds);
  return text != nullptr ? text : "??";
}

void print_client_types(const char* label, uint32_t set) {
  OstrelLine line;
  line.add(label);
  for (const ClientTypeWord& type : kClientTypeWords)
    if ((set & type.bit) != 0) line.add(type.word);
  line.emit('\n');
}

// Calendar times are unsigned 64-bit values: a time past 2038 is a date, never a negative number.
void print_events(const mrib_nsf_pod& nsf) {
  ostrel_outf("   Respawn Count: %d\n", static_cast<int>(nsf.RespawnCount));
  for (const EventLine& event : kEventLines) {
    char calendar[64] = {};
    ostrel_outf("   %s: %s, %s\n", event.label, ostrel_fmt_time(calendar, nsf.*event.when),
                seconds_text(nsf.*event.seconds));
  }
}

void print_private(const mrib_nsf_pod& nsf) {
  ostrel_outf("\nIP NSF :- Active: %c, Assume %c\n", nsf.IsIPInNSF ? 'Y' : 'N',
              nsf.IsIPAssumedInNSF ? 'Y' : 'N');
  ostrel_outf("MRIB connect timer: %s\n", nsf.MRIBConnTimer != 0 ? "Active" : "Inactive");
  if (nsf.MRIBConnTimer != 0)
    ostrel_outf("   MRIB connect timer remaining: %s\n", ostrel_fmt_uptime(nsf.MRIBConnTimeLeft));
  // The server writes the client text with its own line ends; an absent one is left out entirely.
  if (nsf.ClientInfo != nullptr && nsf.ClientInfo[0] != '\0')
    ostrel_outf("NSF client info:\n%s", nsf.ClientInfo);
  ostrel_outf("NSF statistics:\n   Enabled Cnt - %d, Disabled Cnt - %d\n", nsf.NsfOnCount, nsf.NsfOffCount);
  ostrel_outf("   Last Enabled: %s", duration_or_unknown(nsf.NsfLastEnabled));
  ostrel_outf(", Last Disabled: %s\n", duration_or_unknown(nsf.NsfLastDisabled));
  ostrel_outf("Multicast COFO routing state: %s\n", nsf.IsMulticastCOFONSF ? "NSF Activated" : "Normal");
  print_client_types("Current LMRIB clients: ", nsf.CurrLmribClients);
  print_client_types("LMRIB NSF clients: ", nsf.LmribNSFClients);
  print_client_types("Converged LMRIB clients: ", nsf.ConvLmribClients);
}

void print_nsf(const mrib_nsf_pod& nsf, const NsfKeywords* keywords) {
  ostrel_out("IP MRIB Non-Stop Forwarding Status:\n");
  ostrel_outf("Multicast routing state: %s\n", nsf.IsMulticastNSF ? "NSF Activated" : "Normal");
  ostrel_outf("   NSF Lifetime:       %s\n", ostrel_fmt_uptime(nsf.MulticastNSFTimeout));
  if (nsf.IsMulticastNSF)
    ostrel_outf("   NSF Time Remaining: %s\n", ostrel_fmt_uptime(nsf.MulticastNSFTimeLeft));
  if (keywords->detail || keywords->private_fields) print_events(nsf);
  if (keywords->private_fields) print_private(nsf);
}

}  // namespace

void ostrel_kw_nsf_view(const NsfKeywords& keywords) {
  // A missing record fails the fetch like any other failure, and the operator sees the same line. Keyword
  // runs take no -d, so the line never carries the error text.
  if (ostrel_show_item(ostrel_root_handle, kNsfPath,
                       ShowCallbacks<mrib_nsf_pod, const NsfKeywords>{.print = print_nsf,
                                                                      .context = &keywords}) != kCerrOk)
    ostrel_out("No MRIB NSF information available\n");
}
