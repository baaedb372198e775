// The keyword form of a run: "-cmd N" followed by the command's keywords in any order.
#pragma once

enum class KeywordChoice {
  kKeywordRun,  // "-cmd" was given with its number
  kLetterRun,   // no "-cmd": the single-letter options decide
  kFailed,      // the keyword reader refused the vector and said why
};

// Asks the keyword reader for "-cmd". Called for runs whose first argument is "-cmd" or that have fewer
// than two arguments.
[[nodiscard]] KeywordChoice ostrel_keyword_mode_choice(int argc, char** argv);

// Runs the keyword command chosen by ostrel_keyword_mode_choice(); returns the exit status.
[[nodiscard]] int ostrel_keyword_run();

// Reads the chosen command's keywords as ostrel_keyword_run() does, and stops there: nothing is bound or
// shown. False when the reader refused them (it said why). For harnesses of the keyword reader.
[[nodiscard]] bool ostrel_keyword_read();
