// The keyword commands: one row per command number, naming the keywords that fill the command's record (in
// the order the reader is asked for them), what the command binds, and the view it runs. Each view declares
// its record; adding a command is adding its keyword table and a row.
#include "front/keyword_mode.h"

#include <cstdint>
#include <span>
#include <type_traits>

#include "access/output.h"
#include "access/session.h"
#include "platform/cli_args.h"
#include "platform/show.h"
#include "views/client/chkpt_stats.h"
#include "views/client/client_routes.h"
#include "views/client/clients.h"
#include "views/client/nsf.h"
#include "views/client/nsr_end.h"
#include "views/client/rc_ipc.h"
#include "views/client/rpfid.h"
#include "views/mvpn/table_info.h"

namespace {

// One keyword of a command and where its value goes in the command's record `Args`. A keyword without
// value sets `flag`; one with a value sets `present` (which a text keyword may do without) and `number` or
// `text`. A text is the reader's, valid for the whole run.
template <typename Args>
struct Keyword {
  const char* word;
  uint32_t optional = 1;
  uint32_t Args::*flag = nullptr;
  uint32_t Args::*present = nullptr;
  uint32_t Args::*number = nullptr;
  const char* Args::*text = nullptr;
};

template <typename Args>
constexpr Keyword<Args> flag(const char* word, uint32_t Args::*flag) {
  return {.word = word, .flag = flag};
}
template <typename Args>
constexpr Keyword<Args> number(const char* word, uint32_t Args::*value, uint32_t Args::*present) {
  return {.word = word, .present = present, .number = value};
}
template <typename Args>
constexpr Keyword<Args> text(const char* word, const char* Args::*value, uint32_t Args::*present = nullptr) {
  return {.word = word, .present = present, .text = value};
}
// A keyword whose value the command uses unconditionally: the reader refuses a run without it.
template <typename Args>
constexpr Keyword<Args> required_text(const char* word, const char* Args::*value) {
  return {.word = word, .optional = 0, .text = value};
}

// What a command binds before its view runs.
template <typename Args>
struct Bind {
  enum class To { kNothing, kRoot, kTable };
  To to = To::kNothing;
  uint32_t Args::*standby = nullptr;  // kRoot: the flag that picks the standby root
  const char* Args::*vrf = nullptr;   // kTable: the VRF's name, "default" when absent; always the active root
};

template <typename Args>
constexpr Bind<Args> bind_root(uint32_t Args::*standby) {
  return {.to = Bind<Args>::To::kRoot, .standby = standby};
}
template <typename Args>
constexpr Bind<Args> bind_table(const char* Args::*vrf = nullptr) {
  return {.to = Bind<Args>::To::kTable, .vrf = vrf};
}

template <typename Args>
struct Command {
  using Arguments = Args;
  std::span<const Keyword<Args>> keywords;
  Bind<Args> bind;
  void (*view)(const Args&);
};

// ---- The commands' keywords, in the order the reader is asked for them -----------------------------------

using K = ClientsKeywords;
constexpr Keyword<K> kClientsKeywords[] = {
    text("-n", &K::name, &K::name_given), flag("-f", &K::filter),        flag("-detail", &K::detail),
    flag("-private", &K::private_fields), flag("-standby", &K::standby),
};
constexpr Command<K> kClients{kClientsKeywords, bind_root(&K::standby), ostrel_kw_clients_view};

// The client routes bind the client's own tree, which only the view can name.
using R = ClientRoutesKeywords;
constexpr Keyword<R> kClientRoutesKeywords[] = {
    required_text("-n", &R::name),
    number("-j", &R::table, &R::table_given),
    text("-g", &R::group, &R::group_given),
    number("-p", &R::prefix_length, &R::prefix_length_given),
    text("-s", &R::source, &R::source_given),
    flag("-standby", &R::standby),
};
constexpr Command<R> kClientRoutes{kClientRoutesKeywords, {}, ostrel_kw_client_routes_view};

constexpr Keyword<NsfKeywords> kNsfKeywords[] = {
    flag("-private", &NsfKeywords::private_fields),
    flag("-standby", &NsfKeywords::standby),
    flag("-detail", &NsfKeywords::detail),
};
constexpr Command<NsfKeywords> kNsf{kNsfKeywords, bind_root(&NsfKeywords::standby), ostrel_kw_nsf_view};

// The memory item is read and nothing is shown: the platform's item printer, given no callbacks and no
// record type, only reads.
struct MemoryKeywords {};
void read_memory(const MemoryKeywords&) {
  (void)mcast_show_item(ostrel_view_handle, "memory", nullptr, nullptr, nullptr, nullptr, 0, nullptr);
}
constexpr Command<MemoryKeywords> kMemory{{}, bind_table<MemoryKeywords>(), read_memory};

constexpr Keyword<RcIpcKeywords> kRcIpcKeywords[] = {
    flag("-P", &RcIpcKeywords::validation_errors),
    required_text("-W", &RcIpcKeywords::ipc_name),
};
constexpr Command<RcIpcKeywords> kRcIpc{kRcIpcKeywords, bind_table<RcIpcKeywords>(), ostrel_kw_rc_ipc_view};

constexpr Keyword<TableInfoKeywords> kTableInfoKeywords[] = {
    flag("-P", &TableInfoKeywords::private_fields),
    text("-v", &TableInfoKeywords::vrf, &TableInfoKeywords::vrf_given),
};
constexpr Command<TableInfoKeywords> kTableInfo{kTableInfoKeywords, bind_table(&TableInfoKeywords::vrf),
                                                ostrel_kw_table_info_view};

constexpr Keyword<LabelTableInfoKeywords> kLabelTableInfoKeywords[] = {
    text("-v", &LabelTableInfoKeywords::vrf, &LabelTableInfoKeywords::vrf_given),
};
constexpr Command<LabelTableInfoKeywords> kLabelTableInfo{
    kLabelTableInfoKeywords, bind_table(&LabelTableInfoKeywords::vrf), ostrel_kw_label_table_info_view};

constexpr Keyword<ChkptStatsKeywords> kChkptStatsKeywords[] = {
    flag("-standby", &ChkptStatsKeywords::standby),
    flag("-detail", &ChkptStatsKeywords::detail),
};
constexpr Command<ChkptStatsKeywords> kChkptStats{
    kChkptStatsKeywords, bind_root(&ChkptStatsKeywords::standby), ostrel_kw_chkpt_stats_view};

constexpr Keyword<RpfidKeywords> kRpfidKeywords[] = {
    flag("-standby", &RpfidKeywords::standby),
    flag("-summary", &RpfidKeywords::summary),
    number("-address", &RpfidKeywords::address, &RpfidKeywords::address_given),
};
constexpr Command<RpfidKeywords> kRpfid{kRpfidKeywords, bind_root(&RpfidKeywords::standby),
                                        ostrel_kw_rpfid_view};

using N = NsrEndKeywords;
constexpr Keyword<N> kNsrEndKeywords[] = {
    flag("-standby", &N::standby),
    flag("-detail", &N::detail),
    number("-client", &N::client, &N::client_given),
    number("-first", &N::first, &N::first_given),
    number("-last", &N::last, &N::last_given),
};
constexpr Command<N> kNsrEnd{kNsrEndKeywords, bind_root(&N::standby), ostrel_kw_nsr_end_view};

// ---- Running a command -----------------------------------------------------------------------------------

mcast_cli_args_t keyword_reader{};
uint32_t command_number = 0;

// Fills `args` from the reader, keyword by keyword in table order; false when the reader refused one (it
// said why on standard error).
template <typename Args>
bool read_keywords(std::span<const Keyword<Args>> keywords, Args* args) {
  *args = Args{};
  for (const Keyword<Args>& k : keywords) {
    cerr_t rc = kCerrOk;
    if (k.flag != nullptr) {
      rc = mcast_cli_args_eval_none(keyword_reader, k.word, k.optional, &(args->*k.flag));
    } else if (k.text != nullptr) {
      uint32_t* present = k.present != nullptr ? &(args->*k.present) : nullptr;
      rc = mcast_cli_args_eval_str(keyword_reader, k.word, k.optional, present, &(args->*k.text));
    } else {
      rc =
          mcast_cli_args_eval_32(keyword_reader, k.word, k.optional, &(args->*k.present), &(args->*k.number));
    }
    if (rc != kCerrOk) return false;
  }
  return true;
}

template <typename Args>
void bind(const Bind<Args>& bind, const Args& args) {
  using To = typename Bind<Args>::To;
  switch (bind.to) {
    case To::kNothing:
      break;
    case To::kRoot:
      ostrel_bind_root(args.*bind.standby != 0);
      break;
    case To::kTable: {
      const char* vrf = bind.vrf != nullptr ? args.*bind.vrf : nullptr;
      ostrel_bind_table(false, vrf != nullptr ? vrf : "default");
      break;
    }
  }
}

// The command's record: read() fills it, the view reads it.
template <const auto& kCommand>
typename std::remove_cvref_t<decltype(kCommand)>::Arguments command_args;

template <const auto& kCommand>
bool read() {
  return read_keywords(kCommand.keywords, &command_args<kCommand>);
}

// Reads the command's keywords, binds, and runs its view. A bind that fails ends the process.
template <const auto& kCommand>
int run() {
  if (!read<kCommand>()) return 1;
  bind(kCommand.bind, command_args<kCommand>);
  kCommand.view(command_args<kCommand>);
  return 0;
}

struct CommandRow {
  uint32_t number;
  int (*run)();
  bool (*read)();
};

// clang-format off
constexpr CommandRow kCommands[] = {
    {1, run<kClients>, read<kClients>},
    {2, run<kClientRoutes>, read<kClientRoutes>},
    {3, run<kNsf>, read<kNsf>},
    {4, run<kMemory>, read<kMemory>},
    {5, run<kRcIpc>, read<kRcIpc>},
    {6, run<kTableInfo>, read<kTableInfo>},
    {7, run<kLabelTableInfo>, read<kLabelTableInfo>},
    {8, run<kChkptStats>, read<kChkptStats>},
    {9, run<kRpfid>, read<kRpfid>},
    {10, run<kNsrEnd>, read<kNsrEnd>},
};
// clang-format on

const CommandRow* chosen_command() {
  for (const CommandRow& row : kCommands)
    if (row.number == command_number) return &row;
  return nullptr;
}

}  // namespace

KeywordChoice ostrel_keyword_mode_choice(int argc, char** argv) {
  if (mcast_cli_args_init(argc, argv, &keyword_reader) != kCerrOk) return KeywordChoice::kFailed;
  uint32_t present = 0;
  if (mcast_cli_args_eval_32(keyword_reader, "-cmd", 1, &present, &command_number) != kCerrOk)
    return KeywordChoice::kFailed;
  return present ? KeywordChoice::kKeywordRun : KeywordChoice::kLetterRun;
}

int ostrel_keyword_run() {
  if (const CommandRow* row = chosen_command()) return row->run();
  ostrel_outf("Invalid cmd %d\n", static_cast<int>(command_number));
  return 0;
}

bool ostrel_keyword_read() {
  const CommandRow* row = chosen_command();
  return row == nullptr || row->read();
}
