// The man page. Each sentence begins a line of its own and no line is long, as the man(7) macros want it.

#include <cctype>
#include <sstream>

#include "text.h"
#include "writers.h"

namespace {

constexpr std::size_t line_width = 72;

std::string escaped(const std::string& text) { return with_replaced(with_replaced(text, "\\", "\\e"), "-", "\\-"); }

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + escaped(text) + "\\fR"; }

std::string upper_case(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

bool looks_like_the_end_of_a_sentence(const std::string& line) {
  return line.ends_with('.') || line.ends_with('?') || line.ends_with('!');
}

// A line must not begin with what the formatter takes for a request, nor end a sentence where there is none.
std::string text_line(const std::string& line, bool is_inside_a_sentence) {
  std::string whole = escaped(line);
  if (whole.starts_with('.') || whole.starts_with('\'')) whole = "\\&" + whole;
  if (is_inside_a_sentence && looks_like_the_end_of_a_sentence(line)) whole += "\\&";
  return whole + "\n";
}

std::string filled(const std::string& text) {
  const std::vector<std::string> lines = filled_lines(text, line_width);
  std::string whole;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool next_is_lower = i + 1 < lines.size() && std::islower(static_cast<unsigned char>(lines[i + 1][0])) != 0;
    whole += text_line(lines[i], next_is_lower);
  }
  return whole;
}

std::string section(const std::string& title) { return ".SH " + title + "\n"; }

std::string synopsis(const command_page& page) {
  std::string line = "[" + italic("option") + " ...]";
  for (const plain_word& word : page.plain_words) {
    line += word.is_optional ? " [" + italic(word.name) + "]" : " " + italic(word.name);
  }
  return section("SYNOPSIS") + ".B " + escaped(page.name) + "\n" + line + "\n";
}

std::string paragraphs(const std::vector<std::string>& texts) {
  std::string whole;
  for (const std::string& text : texts) {
    if (!whole.empty()) whole += ".PP\n";
    whole += filled(text);
  }
  return whole;
}

std::string option_term(const documented_option& option) {
  std::string term = option.short_name.empty() ? "" : bold("-" + option.short_name) + ", ";
  term += bold("--" + option.long_name);
  return option.value.empty() ? term : term + " " + italic(option.value);
}

std::string with_full_stop(const std::string& text) { return text.ends_with('.') ? text : text + "."; }

std::string options(const command_page& page) {
  std::string whole = section("OPTIONS");
  for (const documented_option& option : page.options) {
    whole += ".TP\n" + option_term(option) + "\n" +
             filled(with_full_stop(option.help.empty() ? option.summary : option.help) + " " + option.addition);
  }
  return whole;
}

std::string terms(const std::string& title, const std::vector<explained_term>& rows) {
  if (rows.empty()) return "";
  std::string whole = section(title);
  for (const explained_term& row : rows) whole += ".TP\n" + bold(row.term) + "\n" + filled(row.text);
  return whole;
}

std::string examples(const std::vector<explained_term>& rows) {
  if (rows.empty()) return "";
  std::string whole;
  for (const explained_term& row : rows) {
    whole += (whole.empty() ? section("EXAMPLES") : ".PP\n") + filled(row.text);
    whole += ".PP\n.RS 4\n.EX\n" + escaped(with_replaced(row.term, "'", "\\(aq")) + "\n.EE\n.RE\n";
  }
  return whole;
}

std::string see_also(const command_page& page) {
  std::string whole = section("SEE ALSO");
  for (const std::string& name : page.see_also) {
    whole += ".BR " + escaped(name) + " (1)" + (&name == &page.see_also.back() ? "\n.PP\n" : ",\n");
  }
  return whole + filled(page.further_reading);
}

}  // namespace

std::string man_page(const command_page& page, const std::string& date) {
  std::ostringstream out;
  out << ".\\\" Written by quarvo-generate from the option table of the program. Do not edit.\n"
      << ".TH " << escaped(upper_case(page.name)) << " 1 " << date << " \"Quarvo " << page.version
      << "\" \"User Commands\"\n"
      << section("NAME") << escaped(page.name) << " \\- " << escaped(page.summary) << "\n"
      << synopsis(page) << section("DESCRIPTION") << paragraphs(page.description) << ".PP\n"
      << filled(page.plain_words_help) << options(page) << terms("EXIT STATUS", page.exit_statuses)
      << terms("FILES", page.files) << examples(page.examples) << see_also(page) << section("AUTHORS")
      << "The Quarvo project.\n";
  return out.str();
}
