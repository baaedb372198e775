// Path arithmetic of the store: directories end in "/", items do not, and a path splits into the directory
// that holds it and its last element. Shared by the store and the tool that builds stores.
#pragma once

#include <string>
#include <string_view>

namespace ostrel::sim {

// A directory path with its closing "/" (an empty path is the root).
inline std::string as_dir(std::string_view path) {
  std::string dir(path);
  if (dir.empty() || dir.back() != '/') dir += '/';
  return dir;
}

// `relative` below the directory `dir` (which ends in "/"); a leading "/" of `relative` is not doubled.
inline std::string join(std::string_view dir, std::string_view relative) {
  if (!relative.empty() && relative.front() == '/') relative.remove_prefix(1);
  std::string path(dir);
  path += relative;
  return path;
}

struct PathSplit {
  std::string_view parent;  // ends in "/"
  std::string_view name;    // a directory's name keeps its closing "/"
};

// "/a/b/c" gives "/a/b/" and "c".
inline PathSplit split_item(std::string_view path) {
  size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {{}, path};
  return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

// "/a/b/" gives "/a/" and "b/"; the root "/" has no parent.
inline PathSplit split_dir(std::string_view dir) {
  if (dir.size() <= 1) return {{}, dir};
  size_t slash = dir.rfind('/', dir.size() - 2);
  if (slash == std::string_view::npos) return {{}, dir};
  return {dir.substr(0, slash + 1), dir.substr(slash + 1)};
}

// What follows the last "/": resume keys count by their last element whether given bare or as a path.
inline std::string_view last_element(std::string_view path) {
  size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace ostrel::sim
