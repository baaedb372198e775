// An argument vector made from fuzz input: the bytes split at NUL into words after a fixed head. Every word
// and the array itself are heap blocks of exactly their size (the array ends with the null element a
// program is given), so that a read past a word or past the vector is a sanitizer report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

class ArgvInput {
 public:
  ArgvInput(std::initializer_list<const char*> head, const uint8_t* data, size_t size) {
    for (const char* word : head) add(word, std::strlen(word));
    const auto* text = reinterpret_cast<const char*>(data);
    size_t start = 0;
    for (size_t i = 0; i <= size; ++i) {
      if (i == size || text[i] == '\0') {
        // A trailing NUL ends the last word rather than starting an empty one.
        if (i < size || start < size) add(text + start, i - start);
        start = i + 1;
      }
    }
    argv_ = std::make_unique<char*[]>(words_.size() + 1);
    for (size_t i = 0; i < words_.size(); ++i) argv_[i] = words_[i].get();
    argv_[words_.size()] = nullptr;
  }

  int argc() const { return static_cast<int>(words_.size()); }
  char** argv() const { return argv_.get(); }

 private:
  void add(const char* text, size_t length) {
    auto word = std::make_unique<char[]>(length + 1);
    std::memcpy(word.get(), text, length);
    word[length] = '\0';
    words_.push_back(std::move(word));
  }

  std::vector<std::unique_ptr<char[]>> words_;
  std::unique_ptr<char*[]> argv_;
};
