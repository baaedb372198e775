// Runs the cases of one case file: for each case it builds the case's root from its fixtures and inline
// faults with vellumctl (once per distinct pair), runs ostrel with the case's arguments in a pinned
// environment, and compares standard output, standard error and exit status byte for byte. The format is in
// README.md here.
//
// usage: case_runner OSTREL VELLUMCTL FIXTURE_DIR WORK_DIR FILE.case
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Case {
  std::string name;
  int line = 0;
  std::vector<std::string> fixtures;
  std::string faults;  // the JSON array of a "faults:" line, as written
  int faults_line = 0;
  std::vector<std::string> args;
  std::vector<std::string> env;
  std::string output_to;  // "/dev/full" or "closed-pipe" instead of a pipe the runner reads
  std::string stdin_text;
  std::string stdout_text;
  std::string stderr_text;
  int status = 0;
};

struct Outcome {
  std::string out;
  std::string err;
  int status = -1;
  std::string failure;  // why the run itself failed
};

bool starts_with(const std::string& s, const char* prefix) {
  return s.rfind(prefix, 0) == 0;
}

std::string trim(const std::string& s) {
  size_t b = s.find_first_not_of(" \t");
  size_t e = s.find_last_not_of(" \t");
  return b == std::string::npos ? std::string() : s.substr(b, e - b + 1);
}

// Words separated by blanks; "..." groups a word that holds blanks or is empty.
bool split_words(const std::string& s, std::vector<std::string>* out, std::string* err) {
  size_t i = 0;
  while (i < s.size()) {
    if (s[i] == ' ' || s[i] == '\t') {
      ++i;
      continue;
    }
    std::string word;
    if (s[i] == '"') {
      size_t end = s.find('"', i + 1);
      if (end == std::string::npos) {
        *err = "unterminated quote";
        return false;
      }
      word = s.substr(i + 1, end - i - 1);
      i = end + 1;
    } else {
      while (i < s.size() && s[i] != ' ' && s[i] != '\t') word += s[i++];
    }
    out->push_back(word);
  }
  return true;
}

// Block lines end with "$", which marks the line's newline; a last line without "$" has none.
bool add_block_line(const std::string& line, std::string* block, bool* open, std::string* err) {
  if (*open) {
    *err = "only the last line of a block may lack its closing $";
    return false;
  }
  if (!line.empty() && line.back() == '$') {
    *block += line.substr(0, line.size() - 1);
    *block += '\n';
  } else {
    *block += line;
    *open = true;
  }
  return true;
}

bool parse_cases(const std::string& path, std::vector<Case>* cases, std::string* err) {
  std::ifstream in(path);
  if (!in) {
    *err = path + ": cannot read";
    return false;
  }
  std::string line;
  int number = 0;
  std::string* block = nullptr;
  bool open = false;
  auto fail = [&](const std::string& why) {
    *err = path + ":" + std::to_string(number) + ": " + why;
    return false;
  };
  // Texts that several cases of the file expect, such as a legend: "--- text NAME" before the first case
  // defines one, and a block line "@NAME" stands for it.
  std::map<std::string, std::string> texts;
  // A "fixtures:" line before the first case names the fixtures of every case that names none.
  std::vector<std::string> file_fixtures;
  std::string why;
  while (std::getline(in, line)) {
    ++number;
    if (starts_with(line, "=== ")) {
      cases->emplace_back();
      cases->back().name = trim(line.substr(4));
      cases->back().line = number;
      cases->back().fixtures = file_fixtures;
      block = nullptr;
      continue;
    }
    if (block == nullptr && (line.empty() || line[0] == '#')) continue;
    if (cases->empty() && starts_with(line, "--- text ")) {
      block = &texts[trim(line.substr(9))];
      open = false;
      continue;
    }
    if (cases->empty() && block == nullptr && starts_with(line, "fixtures:")) {
      if (!split_words(line.substr(9), &file_fixtures, &why)) return fail(why);
      continue;
    }
    if (cases->empty() && block == nullptr) return fail("text before the first case");
    if (block != nullptr && starts_with(line, "@")) {
      // "@NAME*N" stands for N copies, for the long runs of like lines that a full batch prints. A text may
      // use the texts defined before it.
      std::string name = line.substr(1);
      int copies = 1;
      if (size_t star = name.rfind('*'); star != std::string::npos) {
        copies = std::atoi(name.c_str() + star + 1);
        name.resize(star);
      }
      auto text = texts.find(name);
      if (text == texts.end() || &text->second == block) return fail("no text named '" + name + "'");
      if (open) return fail("only the last line of a block may lack its closing $");
      for (int i = 0; i < copies; ++i) *block += text->second;
      continue;
    }
    if (cases->empty()) {
      if (!add_block_line(line, block, &open, err)) return fail(*err);
      continue;
    }
    Case& c = cases->back();
    if (starts_with(line, "--- ")) {
      std::string head = trim(line.substr(4));
      open = false;
      block = nullptr;
      if (head == "stdout") {
        block = &c.stdout_text;
      } else if (head == "stderr") {
        block = &c.stderr_text;
      } else if (head == "stdin") {
        block = &c.stdin_text;
      } else if (starts_with(head, "status ")) {
        c.status = std::atoi(head.c_str() + 7);
      } else {
        return fail("unknown block '" + head + "'");
      }
      continue;
    }
    if (block != nullptr) {
      if (!add_block_line(line, block, &open, err)) return fail(*err);
      continue;
    }
    if (starts_with(line, "fixtures:")) {
      c.fixtures.clear();
      if (!split_words(line.substr(9), &c.fixtures, &why)) return fail(why);
    } else if (starts_with(line, "faults:")) {
      c.faults = trim(line.substr(7));
      c.faults_line = number;
    } else if (starts_with(line, "args:")) {
      if (!split_words(line.substr(5), &c.args, &why)) return fail(why);
    } else if (starts_with(line, "env:")) {
      if (!split_words(line.substr(4), &c.env, &why)) return fail(why);
    } else if (starts_with(line, "output-to:")) {
      c.output_to = trim(line.substr(10));
      if (c.output_to != "/dev/full" && c.output_to != "closed-pipe") return fail("output-to: /dev/full or closed-pipe");
    } else {
      return fail("expected fixtures:, faults:, args:, env:, output-to: or a --- block");
    }
  }
  if (cases->empty()) return fail("no cases");
  return true;
}

// Runs argv with `env` as its whole environment, feeding `input` and collecting both output streams; with
// `output_to`, standard output goes to /dev/full or to a pipe whose reader is gone, with SIGPIPE ignored as a
// shell may leave it (the signal's default needs nothing of the program).
Outcome run(const std::vector<std::string>& argv, const std::vector<std::string>& env,
            const std::string& input, const std::string& output_to = "") {
  Outcome o;
  int in_pipe[2], out_pipe[2], err_pipe[2];
  if (pipe(in_pipe) != 0 || pipe(out_pipe) != 0 || pipe(err_pipe) != 0) {
    o.failure = std::string("pipe: ") + strerror(errno);
    return o;
  }
  pid_t pid = fork();
  if (pid == 0) {
    dup2(in_pipe[0], 0);
    dup2(out_pipe[1], 1);
    dup2(err_pipe[1], 2);
    signal(SIGPIPE, output_to == "closed-pipe" ? SIG_IGN : SIG_DFL);
    if (output_to == "/dev/full") {
      int full = open("/dev/full", O_WRONLY);
      dup2(full, 1);
      close(full);
    } else if (int gone[2]; output_to == "closed-pipe" && pipe(gone) == 0) {
      close(gone[0]);
      dup2(gone[1], 1);
      close(gone[1]);
    }
    for (int fd : {in_pipe[0], in_pipe[1], out_pipe[0], out_pipe[1], err_pipe[0], err_pipe[1]}) close(fd);
    std::vector<char*> a, e;
    for (const auto& s : argv) a.push_back(const_cast<char*>(s.c_str()));
    for (const auto& s : env) e.push_back(const_cast<char*>(s.c_str()));
    a.push_back(nullptr);
    e.push_back(nullptr);
    // A program is run by its path but sees only its name, as when the shell finds it on PATH.
    std::string program = argv[0];
    std::string name = program.substr(program.rfind('/') + 1);
    a[0] = name.data();
    execve(program.c_str(), a.data(), e.data());
    _exit(127);
  }
  close(in_pipe[0]);
  close(out_pipe[1]);
  close(err_pipe[1]);
  signal(SIGPIPE, SIG_IGN);
  if (!input.empty() && write(in_pipe[1], input.data(), input.size()) < 0) o.failure = "cannot feed stdin";
  close(in_pipe[1]);
  pollfd fds[2] = {{out_pipe[0], POLLIN, 0}, {err_pipe[0], POLLIN, 0}};
  std::string* sinks[2] = {&o.out, &o.err};
  int open_count = 2;
  char buffer[65536];
  while (open_count > 0) {
    if (poll(fds, 2, 20000) <= 0) {
      kill(pid, SIGKILL);
      o.failure = "no output for 20 seconds: killed";
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, static_cast<size_t>(n));
      } else {
        close(fds[i].fd);
        fds[i].fd = -1;
        --open_count;
      }
    }
  }
  int status = 0;
  waitpid(pid, &status, 0);
  if (WIFEXITED(status)) {
    o.status = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    o.status = 128 + WTERMSIG(status);
  }
  return o;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, end - start + 1));
    start = end + 1;
  }
  return lines;
}

// One line in the case-file notation: its newline shown as "$".
std::string shown(const std::string& line) {
  if (!line.empty() && line.back() == '\n') return line.substr(0, line.size() - 1) + "$";
  return line + "   (no newline)";
}

// A line diff by longest common subsequence: outputs are small.
void print_diff(const std::string& what, const std::string& want, const std::string& got) {
  std::vector<std::string> a = lines_of(want), b = lines_of(got);
  std::vector<std::vector<int>> lcs(a.size() + 1, std::vector<int>(b.size() + 1, 0));
  for (size_t i = a.size(); i-- > 0;)
    for (size_t j = b.size(); j-- > 0;)
      lcs[i][j] = a[i] == b[j] ? lcs[i + 1][j + 1] + 1 : std::max(lcs[i + 1][j], lcs[i][j + 1]);
  std::printf("  %s differs (- expected, + actual):\n", what.c_str());
  std::vector<std::pair<char, const std::string*>> script;
  size_t i = 0, j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && a[i] == b[j]) {
      script.emplace_back(' ', &a[i]);
      ++i, ++j;
    } else if (i < a.size() && (j == b.size() || lcs[i + 1][j] >= lcs[i][j + 1])) {
      script.emplace_back('-', &a[i++]);
    } else {
      script.emplace_back('+', &b[j++]);
    }
  }
  // Unchanged lines are shown only near a change, so that a long view's diff stays readable.
  constexpr size_t kContext = 3;
  auto near_change = [&](size_t k) {
    size_t from = k >= kContext ? k - kContext : 0, to = std::min(script.size(), k + kContext + 1);
    for (size_t n = from; n < to; ++n)
      if (script[n].first != ' ') return true;
    return false;
  };
  bool skipped = false;
  for (size_t k = 0; k < script.size(); ++k) {
    if (script[k].first == ' ' && !near_change(k)) {
      if (!skipped) std::printf("      ...\n");
      skipped = true;
      continue;
    }
    skipped = false;
    std::printf("    %c %s\n", script[k].first, shown(*script[k].second).c_str());
  }
}

// The case's inline faults as a fixture of their own, named for the line that holds them so that the store
// tool's messages point there.
std::string write_faults_fixture(const std::string& work, const Case& c) {
  std::string file = work + "/faults-line" + std::to_string(c.faults_line) + ".json";
  std::ofstream(file) << "{\"faults\": " << c.faults << "}\n";
  return file;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fprintf(stderr, "usage: case_runner OSTREL VELLUMCTL FIXTURE_DIR WORK_DIR FILE.case\n");
    return 2;
  }
  const std::string ostrel = argv[1], vellumctl = argv[2], fixture_dir = argv[3], work = argv[4];
  std::vector<Case> cases;
  std::string err;
  if (!parse_cases(argv[5], &cases, &err)) {
    std::fprintf(stderr, "%s\n", err.c_str());
    return 2;
  }
  std::map<std::pair<std::vector<std::string>, std::string>, std::string> roots;
  int failed = 0;
  for (const Case& c : cases) {
    auto [it, fresh] =
        roots.try_emplace({c.fixtures, c.faults}, work + "/root" + std::to_string(roots.size()));
    const std::string& root = it->second;
    if (fresh) {
      std::vector<std::string> build = {vellumctl, "build", root};
      for (const auto& f : c.fixtures) build.push_back(fixture_dir + "/" + f);
      if (!c.faults.empty()) build.push_back(write_faults_fixture(work, c));
      Outcome b = run(build, {"PATH=/usr/bin:/bin"}, "");
      if (b.status != 0) {
        std::printf("FAIL %s (line %d): building the root failed:\n%s%s\n", c.name.c_str(), c.line,
                    b.out.c_str(), b.err.c_str());
        ++failed;
        continue;
      }
    }
    std::vector<std::string> args = {ostrel};
    args.insert(args.end(), c.args.begin(), c.args.end());
    std::vector<std::string> env = {"OSTREL_ROOT=" + root, "TZ=UTC", "LC_ALL=C", "PATH=/usr/bin:/bin"};
    env.insert(env.end(), c.env.begin(), c.env.end());
    Outcome o = run(args, env, c.stdin_text, c.output_to);
    bool ok = o.failure.empty() && o.out == c.stdout_text && o.err == c.stderr_text && o.status == c.status;
    if (ok) continue;
    ++failed;
    std::printf("FAIL %s (line %d)\n", c.name.c_str(), c.line);
    if (!o.failure.empty()) std::printf("  %s\n", o.failure.c_str());
    if (o.out != c.stdout_text) print_diff("stdout", c.stdout_text, o.out);
    if (o.err != c.stderr_text) print_diff("stderr", c.stderr_text, o.err);
    if (o.status != c.status) std::printf("  status: expected %d, got %d\n", c.status, o.status);
  }
  std::printf("%zu cases, %d failed\n", cases.size(), failed);
  return failed == 0 ? 0 : 1;
}
