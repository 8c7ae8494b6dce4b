#pragma once

#include <string>
#include <vector>

// The word that the fewest insertions, deletions, replacements and cases of letters make of this one; empty where even
// the nearest differs in more than a third of it, and two letters, or in all.
std::string nearest_word(const std::string& word, const std::vector<std::string>& words);
