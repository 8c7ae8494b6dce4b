// The reader of results files, and all conversions, on arbitrary bytes after a head as the program writes it.
//
// Input: a byte for the layout, then what follows the head; with the highest bit of the byte set there is no head. What
// the reader takes must fit together, and what is written as JSON must be JSON.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "CConversion.h"
#include "CResultsReader.h"
#include "global-types-and-parameters.h"
#include "memory-file.h"
#include "quarvo-legend.h"
#include "quarvo-messages.h"

namespace {

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

// What `write(stream)` writes.
template <typename Writer>
std::string text_of(Writer write) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* const stream = open_memstream(&bytes, &size);
  write(stream);
  std::fclose(stream);
  std::string text(bytes, size);
  std::free(bytes);
  return text;
}

std::string head_of(unsigned layout) {
  if ((layout & 0x80U) != 0) return "";
  constexpr int formats[] = {0, 1, 3, 3};
  init_param();
  global_input_filename = "in.fa";
  global_output_filename = (layout & 4U) != 0 ? "out" : "";
  global_print_sat_mode = formats[layout & 3U];
  global_sequenceInfoAsComment = (layout & 3U) == 3;
  global_flanking = (layout & 8U) != 0 ? 5 : 0;
  global_treat_Ns_as_missense = (layout & 16U) != 0;
  global_print_sat_seq_mode = static_cast<int>(layout >> 5U) % 3;
  return text_of([](std::FILE* out) {
    creator_message(out, "# ");
    print_search_parameters(out, "# ");
    print_output_format(out, "# ");
  });
}

void check_repeat(const CResultsReader& reader) {
  const results_repeat& repeat = reader.repeat();
  require(repeat.start >= 1 && repeat.end >= repeat.start, "a repeat has a place");
  require(repeat.span == repeat.end - repeat.start + 1, "the span is that of the place");
  require(repeat.unit.size() == static_cast<std::size_t>(repeat.unit_length), "the unit has its length");
  require(repeat.normal_form.size() == repeat.unit.size(), "the normal form has its length");
  if (repeat.sequence) require(repeat.sequence->size() == static_cast<std::size_t>(repeat.span), "symbols as told");
  if (repeat.alignment) {
    require(repeat.alignment->sequence.size() == repeat.alignment->unit.size(), "an alignment has equal lines");
  }
  const results_sequence& sequence = reader.sequence();
  if (sequence.length) require(repeat.end <= *sequence.length, "a repeat lies in its sequence");
}

// Gives everything to the conversion. Returns the number of repeats, or -1 when the file was refused, or what the
// format cannot express.
int convert(const std::string& name, CConversion& conversion, std::FILE* out) {
  CResultsReader reader;
  int repeats = 0;
  if (!reader.open(name) || !conversion.begin(out, reader.header())) return -1;
  for (;;) {
    switch (reader.next()) {
      case CResultsReader::item::sequence:
        if (!conversion.begin_sequence(out, reader.sequence())) return -1;
        break;
      case CResultsReader::item::repeat:
        check_repeat(reader);
        if (!conversion.add(out, reader.repeat())) return -1;
        ++repeats;
        break;
      case CResultsReader::item::end:
        require(!reader.error(), "an end without error");
        require(conversion.finish(out), "a conversion ends");
        return repeats;
      default:
        require(static_cast<bool>(reader.error()) && !reader.error_text().empty(), "a failure with a reason");
        return -1;
    }
  }
}

void check_json(const std::string& text, int repeats) {
  int lines = 0;
  for (std::size_t begin = 0; begin != text.size(); ++lines) {
    const std::size_t end = text.find('\n', begin);
    require(nlohmann::json::accept(text.substr(begin, end - begin)), "JSON in every line");
    begin = end + 1;
  }
  require(lines == repeats, "a line for every repeat");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const CMemoryFile file(head_of(data[0]) + std::string(data + 1, data + size));
  conversion_settings settings;
  settings.merges = size % 4 == 0;
  settings.has_more_columns = settings.has_column_names = true;
  for (settings.to = to_bed; settings.to <= to_multiqc; ++settings.to) {
    if (settings.to == to_mask) continue;  // which reads another file
    const auto conversion = make_conversion(settings);
    int repeats = 0;
    const std::string text = text_of([&](std::FILE* out) { repeats = convert(file.name(), *conversion, out); });
    if (repeats < 0) continue;
    if (settings.to == to_json && !settings.merges) check_json(text, repeats);
    const bool is_one_value = settings.to == to_multiqc || settings.to == to_expansionhunter;
    if (is_one_value) require(nlohmann::json::accept(text), "what is written is JSON");
  }
  return 0;
}
