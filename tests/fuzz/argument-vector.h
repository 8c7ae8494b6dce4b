// A command line as main gets it.
#pragma once

#include <string>
#include <vector>

// The name of the program, in all messages that quote it, and the words after it.
class CArgumentVector {
 public:
  explicit CArgumentVector(std::vector<std::string> its_words) : words(std::move(its_words)) {
    words.insert(words.begin(), "quarvo");
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
  }
  CArgumentVector(const CArgumentVector&) = delete;
  CArgumentVector& operator=(const CArgumentVector&) = delete;

  int argc() const { return static_cast<int>(words.size()); }
  char** argv() { return pointers.data(); }

 private:
  std::vector<std::string> words;
  std::vector<char*> pointers;
};
