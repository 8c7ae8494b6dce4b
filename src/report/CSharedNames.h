#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

// Which names several sequences bear, by a hash of 64 bits each.
class CSharedNames {
 public:
  using key = std::uint64_t;

  // Returns what stands for the name.
  key add(std::string_view name) {
    const key its_key = std::hash<std::string_view>{}(name);
    const auto [entry, is_new] = is_shared_of.try_emplace(its_key, false);
    if (!is_new) entry->second = true;
    return its_key;
  }

  // Whether the name of that key has been added more than once.
  bool is_shared(key name) const { return is_shared_of.at(name); }

 private:
  std::unordered_map<key, bool> is_shared_of;
};
