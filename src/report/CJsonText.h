#ifndef QUARVO_CJSONTEXT_H
#define QUARVO_CJSONTEXT_H

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// Builds a JSON text that may stand inside an HTML script element: '<', '>' and '&' are always escaped, so nothing in
// it can end that element. The rest is as json_text() gives it: UTF-8, with U+FFFD for what is none.
//
// The caller opens and closes objects and arrays in the right order; commas come by themselves.
class CJsonText {
 public:
  CJsonText& begin_object() { return open('{'); }
  CJsonText& end_object() { return close('}'); }
  CJsonText& begin_array() { return open('['); }
  CJsonText& end_array() { return close(']'); }
  CJsonText& key(std::string_view name);
  CJsonText& value(std::string_view text);
  CJsonText& value(std::int64_t number);
  CJsonText& null();

  // An array of what `element` gives for each item: a number, a text, or std::optional for a number or null.
  template <typename Items, typename Element>
  CJsonText& array(std::string_view name, const Items& items, Element element) {
    key(name).begin_array();
    for (const auto& item : items) put(element(item));
    return end_array();
  }

  // A finished JSON text as the next value.
  CJsonText& finished(std::string_view json);

  const std::string& text() const { return out; }

 private:
  std::string out;
  bool needs_comma = false;

  CJsonText& open(char bracket);
  CJsonText& close(char bracket);
  void separate();
  void append_escaped(std::string_view text);

  template <std::integral Number>
  void put(Number number) {
    value(static_cast<std::int64_t>(number));
  }
  void put(std::string_view text) { value(text); }
  template <typename Optional>
  requires requires(const Optional& optional) { optional.has_value(); }
  void put(const Optional& optional) {
    if (optional.has_value()) {
      put(*optional);
    } else {
      null();
    }
  }
};

// The number of bytes that a number and the comma behind it take.
std::size_t json_size(std::int64_t number);
// The number of bytes that a text, its quotes and the comma behind it take.
std::size_t json_size(std::string_view text);

#endif
