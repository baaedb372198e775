// The keyword commands: one row per command number, naming the keywords that fill the command's record (in
// the order the reader is asked for them), what the command binds, and the view it runs. Adding a command
// is adding its record, its keyword table and a row.
#include "front/keyword_mode.h"

#include <cstdint>
#include <span>
#include <type_traits>

#include "access/output.h"
#include "access/session.h"
#include "front/connection.h"
#include "platform/cli_args.h"
#include "platform/show.h"

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
  void (*view)(const Args&);  // none for a command whose display this program does not have yet
};

// ---- The commands' records and keywords ------------------------------------------------------------------

struct ClientsArgs {
  const char* name;
  uint32_t name_given, filter, detail, private_fields, standby;
};
constexpr Keyword<ClientsArgs> kClientsKeywords[] = {
    text("-n", &ClientsArgs::name, &ClientsArgs::name_given),
    flag("-f", &ClientsArgs::filter),
    flag("-detail", &ClientsArgs::detail),
    flag("-private", &ClientsArgs::private_fields),
    flag("-standby", &ClientsArgs::standby),
};
constexpr Command<ClientsArgs> kClients{kClientsKeywords, bind_root(&ClientsArgs::standby), nullptr};

// The client routes bind the client's own tree, which only the view can name.
struct ClientRoutesArgs {
  const char* name;
  uint32_t table, table_given;
  const char* group;
  uint32_t group_given, prefix_length, prefix_length_given;
  const char* source;
  uint32_t source_given, standby;
};
constexpr Keyword<ClientRoutesArgs> kClientRoutesKeywords[] = {
    required_text("-n", &ClientRoutesArgs::name),
    number("-j", &ClientRoutesArgs::table, &ClientRoutesArgs::table_given),
    text("-g", &ClientRoutesArgs::group, &ClientRoutesArgs::group_given),
    number("-p", &ClientRoutesArgs::prefix_length, &ClientRoutesArgs::prefix_length_given),
    text("-s", &ClientRoutesArgs::source, &ClientRoutesArgs::source_given),
    flag("-standby", &ClientRoutesArgs::standby),
};
constexpr Command<ClientRoutesArgs> kClientRoutes{kClientRoutesKeywords, {}, nullptr};

struct NsfArgs {
  uint32_t private_fields, standby, detail;
};
constexpr Keyword<NsfArgs> kNsfKeywords[] = {
    flag("-private", &NsfArgs::private_fields),
    flag("-standby", &NsfArgs::standby),
    flag("-detail", &NsfArgs::detail),
};
constexpr Command<NsfArgs> kNsf{kNsfKeywords, bind_root(&NsfArgs::standby), nullptr};

// The memory item is read and nothing is shown: the platform's item printer, given no callbacks and no
// record type, only reads.
struct MemoryArgs {};
constexpr Command<MemoryArgs> kMemory{{}, bind_table<MemoryArgs>(), [](const MemoryArgs&) {
                                        (void)mcast_show_item(ostrel_view_handle, "memory", nullptr, nullptr,
                                                              nullptr, nullptr, 0, nullptr);
                                      }};

struct RouteCollapseIpcArgs {
  uint32_t validation_errors;
  const char* ipc_name;
};
constexpr Keyword<RouteCollapseIpcArgs> kRouteCollapseIpcKeywords[] = {
    flag("-P", &RouteCollapseIpcArgs::validation_errors),
    required_text("-W", &RouteCollapseIpcArgs::ipc_name),
};
constexpr Command<RouteCollapseIpcArgs> kRouteCollapseIpc{kRouteCollapseIpcKeywords,
                                                          bind_table<RouteCollapseIpcArgs>(), nullptr};

struct TableInfoArgs {
  uint32_t private_fields;
  const char* vrf;
  uint32_t vrf_given;
};
constexpr Keyword<TableInfoArgs> kTableInfoKeywords[] = {
    flag("-P", &TableInfoArgs::private_fields),
    text("-v", &TableInfoArgs::vrf, &TableInfoArgs::vrf_given),
};
constexpr Command<TableInfoArgs> kTableInfo{kTableInfoKeywords, bind_table(&TableInfoArgs::vrf), nullptr};

struct LabelTableInfoArgs {
  const char* vrf;
  uint32_t vrf_given;
};
constexpr Keyword<LabelTableInfoArgs> kLabelTableInfoKeywords[] = {
    text("-v", &LabelTableInfoArgs::vrf, &LabelTableInfoArgs::vrf_given),
};
constexpr Command<LabelTableInfoArgs> kLabelTableInfo{kLabelTableInfoKeywords,
                                                      bind_table(&LabelTableInfoArgs::vrf), nullptr};

struct CheckpointArgs {
  uint32_t standby, detail;
};
constexpr Keyword<CheckpointArgs> kCheckpointKeywords[] = {
    flag("-standby", &CheckpointArgs::standby),
    flag("-detail", &CheckpointArgs::detail),
};
constexpr Command<CheckpointArgs> kCheckpoint{kCheckpointKeywords, bind_root(&CheckpointArgs::standby),
                                              nullptr};

struct RpfIdArgs {
  uint32_t standby, summary, address, address_given;
};
constexpr Keyword<RpfIdArgs> kRpfIdKeywords[] = {
    flag("-standby", &RpfIdArgs::standby),
    flag("-summary", &RpfIdArgs::summary),
    number("-address", &RpfIdArgs::address, &RpfIdArgs::address_given),
};
constexpr Command<RpfIdArgs> kRpfId{kRpfIdKeywords, bind_root(&RpfIdArgs::standby), nullptr};

struct NsrEndArgs {
  uint32_t standby, detail, client, client_given, first, first_given, last, last_given;
};
constexpr Keyword<NsrEndArgs> kNsrEndKeywords[] = {
    flag("-standby", &NsrEndArgs::standby),
    flag("-detail", &NsrEndArgs::detail),
    number("-client", &NsrEndArgs::client, &NsrEndArgs::client_given),
    number("-first", &NsrEndArgs::first, &NsrEndArgs::first_given),
    number("-last", &NsrEndArgs::last, &NsrEndArgs::last_given),
};
constexpr Command<NsrEndArgs> kNsrEnd{kNsrEndKeywords, bind_root(&NsrEndArgs::standby), nullptr};

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

// Reads the command's keywords, binds, and runs its view. A bind that fails ends the process.
template <const auto& kCommand>
int run() {
  using Args = typename std::remove_cvref_t<decltype(kCommand)>::Arguments;
  static Args args;
  if (!read_keywords(kCommand.keywords, &args)) return 1;
  bind(kCommand.bind, args);
  if (kCommand.view != nullptr) kCommand.view(args);
  return 0;
}

struct CommandRow {
  uint32_t number;
  int (*run)();
};

constexpr CommandRow kCommands[] = {
    {1, run<kClients>},        {2, run<kClientRoutes>},     {3, run<kNsf>},
    {4, run<kMemory>},         {5, run<kRouteCollapseIpc>}, {6, run<kTableInfo>},
    {7, run<kLabelTableInfo>}, {8, run<kCheckpoint>},       {9, run<kRpfId>},
    {10, run<kNsrEnd>},
};

}  // namespace

KeywordChoice ostrel_keyword_mode_choice(int argc, char** argv) {
  if (mcast_cli_args_init(argc, argv, &keyword_reader) != kCerrOk) return KeywordChoice::kFailed;
  uint32_t present = 0;
  if (mcast_cli_args_eval_32(keyword_reader, "-cmd", 1, &present, &command_number) != kCerrOk)
    return KeywordChoice::kFailed;
  return present ? KeywordChoice::kKeywordRun : KeywordChoice::kLetterRun;
}

int ostrel_keyword_run() {
  for (const CommandRow& row : kCommands)
    if (row.number == command_number) return row.run();
  ostrel_outf("Invalid cmd %d\n", static_cast<int>(command_number));
  return 0;
}
