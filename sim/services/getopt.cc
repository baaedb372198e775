// The option scanner of the simulated platform. It keeps, besides the shared optind, only its place inside
// a group of letters ("-dr"), and forgets that place whenever optind was moved by someone else.
#include "platform/getopt.h"

#include <cstring>

namespace ostrel::sim {
namespace {

struct ScanPlace {
  int optind = -1;   // optind as this scanner left it
  int position = 0;  // next letter within argv[optind]; 0 between words
};

ScanPlace& place() {
  static ScanPlace scan;
  return scan;
}

int finish(int result) {
  place().optind = optind;
  return result;
}

// Moves to the next word once the letters of this one are used up.
void step_letter(const char* word) {
  ScanPlace& scan = place();
  if (word[++scan.position] == '\0') {
    ++optind;
    scan.position = 0;
  }
}

}  // namespace
}  // namespace ostrel::sim

int _getopt(int argc, char* const argv[], const char* optstring) {
  using ostrel::sim::finish;
  ostrel::sim::ScanPlace& scan = ostrel::sim::place();
  // A moved optind, or 0 (the customary request for a fresh scan), drops the place within a group.
  if (optind != scan.optind || optind < 1) scan.position = 0;
  if (optind < 1) optind = 1;
  optarg = nullptr;
  if (scan.position == 0) {
    if (optind >= argc || !argv[optind]) return finish(-1);
    const char* word = argv[optind];
    if (word[0] != '-' || word[1] == '\0') return finish(-1);
    if (std::strcmp(word, "--") == 0) {
      ++optind;
      return finish(-1);
    }
    scan.position = 1;
  }

  const char* word = argv[optind];
  char letter = word[scan.position];
  bool report_missing = optstring[0] == ':';
  const char* declared = letter == ':' ? nullptr : std::strchr(optstring + (report_missing ? 1 : 0), letter);
  if (!declared) {
    optopt = static_cast<unsigned char>(letter);
    ostrel::sim::step_letter(word);
    return finish('?');
  }
  if (declared[1] != ':') {
    ostrel::sim::step_letter(word);
    return finish(letter);
  }

  // An option that takes an argument: the rest of this word, or else the whole next word.
  const char* rest = word + scan.position + 1;
  scan.position = 0;
  ++optind;
  if (*rest != '\0') {
    optarg = const_cast<char*>(rest);
    return finish(letter);
  }
  if (optind >= argc || !argv[optind]) {
    optopt = static_cast<unsigned char>(letter);
    return finish(report_missing ? ':' : '?');
  }
  optarg = argv[optind++];
  return finish(letter);
}
