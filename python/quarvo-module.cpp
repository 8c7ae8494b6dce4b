// quarvo._quarvo: the search of one sequence and the reading of results files, for the package around it.
//
// What a search finds is written as the program writes it, into memory, and read back by the reader of results files:
// so both functions tell of repeats in the same words, and there is one description of each.

#include <fcntl.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

#include "CFastShortcuts.h"
#include "CResultsReader.h"
#include "CSearchController.h"
#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "quarvo-legend.h"
#include "quarvo-messages.h"
#include "results-texts.h"

namespace py = pybind11;

namespace {

// Options of a run over files: these say what is read, and how results are written.
constexpr std::string_view options_of_runs[] = {"outputFormat", "sequenceInfoAsComment", "firstSeq", "lastSeq",
                                                "maskX"};

bool is_search_option(const option_row& row) {
  return !is_plain_words(row) && !std::holds_alternative<std::string*>(row.destination) &&
         std::ranges::find(options_of_runs, std::string_view(row.long_name)) == std::end(options_of_runs);
}

const option_row& row_of(const std::string& name) {
  for (const option_row& row : option_table()) {
    if (name == row.long_name && is_search_option(row)) return row;
  }
  throw py::type_error("search() has no option " + name + "; help(quarvo.search) names them, or quarvo.options()");
}

// The word itself, or for words with numbers also the number.
void set_word(const option_row& row, int* place, const py::handle& value) {
  const auto text = py::cast<std::string>(py::str(value));
  const auto found = std::ranges::find(row.words, text, &option_word::word);
  if (found != row.words.end()) {
    *place = static_cast<int>(found - row.words.begin());
    return;
  }
  std::string known;
  for (const option_word& word : row.words) known.append(known.empty() ? "" : ", ").append(word.word);
  throw py::value_error(std::string(row.long_name) + " is one of " + known + ", not " + text);
}

void set_option(const option_row& row, const py::handle& value) {
  const auto set = [&](const auto& destination) {
    using type = std::remove_cvref_t<decltype(destination)>;
    if constexpr (std::is_same_v<type, word_destination>) {
      set_word(row, destination.place, value);
    } else if constexpr (std::is_same_v<type, bool*>) {
      if (py::cast<bool>(value)) *destination = !*destination;
    } else if constexpr (std::is_arithmetic_v<std::remove_pointer_t<type>>) {
      *destination = py::cast<std::remove_pointer_t<type>>(value);
    }
  };
  try {
    std::visit(set, row.destination);
  } catch (const py::cast_error&) {
    throw py::type_error(std::string(row.long_name) + " takes " + value_label(row) + ", not " +
                         py::cast<std::string>(py::repr(value)));
  }
}

// Puts the options into force: the parameters are one set for the process, so this and all that reads them holds the
// interpreter's lock.
void put_in_force(const py::dict& options) {
  init_param();
  parsed_options = {};
  for (const auto& [name, value] : options) set_option(row_of(py::cast<std::string>(name)), value);
  global_print_sat_mode = extended_quarvo_format;
  parameter_complaint complaint = check_parameters();
  if (complaint.status == 0) return;
  complaint.text.erase(complaint.text.find_last_not_of('\n') + 1);
  throw py::value_error(complaint.text);
}

search_settings settings_in_force() {
  CSearchController::reset_minimum_arrays();
  CSearchController::make_minimum_arrays();
  return current_search_settings();
}

void fill(CSequence_Mol& record, const std::string& sequence, const std::string& name) {
  if (sequence.size() > CSequence_Mol::max_length) {
    throw py::value_error("a sequence has at most " + std::to_string(CSequence_Mol::max_length) + " symbols");
  }
  if (name.find_first_of(std::string_view("\n\r\0", 3)) != std::string::npos) {
    throw py::value_error("the name of a sequence is one line");
  }
  const auto length = static_cast<unsigned>(sequence.size());
  record.symbols.reserve(length);
  for (unsigned i = 0; i < length; ++i) {
    const char meaning = symbol_table[sequence[i]];
    if (meaning < CSymbolTable::replaced || meaning == CSymbolTable::bad) {
      throw py::value_error("position " + std::to_string(i) + " of the sequence holds " +
                            py::cast<std::string>(py::repr(py::bytes(&sequence[i], 1))).substr(1) +
                            ", which is no nucleotide code");
    }
    record.symbols.buffer[i] = meaning == CSymbolTable::replaced ? record.replacement_symbol : meaning;
  }
  record.symbols.length = length;
  record.full_name.assign(name.c_str());
  record.short_name.assign(name.substr(0, name.find(' ')).c_str());
}

// Lets the interpreter see to signals now and then, so that Ctrl-C ends a long search.
class CSignalsLookedAfter {
 public:
  void operator()() {
    const auto now = std::chrono::steady_clock::now();
    if (now < due) return;
    due = now + std::chrono::milliseconds(100);
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  }

 private:
  std::chrono::steady_clock::time_point due = std::chrono::steady_clock::now();
};

CsatContainer& search_with(CSearchController& search, int mode, std::FILE* out) {
  switch (mode) {
    case search_mode_exact:
      search.exact_search_2();
      break;
    case search_mode_extend_exact:
      search.search_exact_and_extend_to_imperfect_repeats();
      break;
    default:
      search.complete_imperfect_search(out);
  }
  return mode == search_mode_exact ? search.result_list : search.work_list;
}

py::dict to_python(const results_repeat& repeat) {
  using namespace py::literals;
  py::object edits = py::none();
  if (repeat.edits) {
    py::list list;
    for (const results_edit& e : *repeat.edits) list.append(py::make_tuple(e.position - 1, std::string(1, e.kind)));
    edits = py::tuple(list);
  }
  py::object alignment = py::none();
  if (repeat.alignment) {
    alignment = py::make_tuple(repeat.alignment->sequence, repeat.alignment->markers, repeat.alignment->unit);
  }
  return py::dict("start"_a = repeat.start - 1, "end"_a = repeat.end, "unit"_a = repeat.unit,
                  "normal_form"_a = repeat.normal_form, "length"_a = repeat.length, "score"_a = repeat.score,
                  "perfection"_a = repeat.perfection, "mismatches"_a = repeat.mismatches,
                  "insertions"_a = repeat.insertions, "deletions"_a = repeat.deletions, "Ns"_a = repeat.Ns,
                  "edits"_a = edits, "sequence"_a = repeat.sequence, "left_flank"_a = repeat.left_flank,
                  "right_flank"_a = repeat.right_flank, "alignment"_a = alignment);
}

// Names may hold any byte; those that are no UTF-8 become surrogates, as in names of files.
py::str text_of(std::string_view bytes) {
  return py::reinterpret_steal<py::str>(
      PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape"));
}

[[noreturn]] void raise(CResultsReader& results) {
  const results_error& error = results.error();
  const bool is_of_the_system =
      error.kind == results_error::kind_type::not_opened || error.kind == results_error::kind_type::not_read;
  PyErr_SetString(is_of_the_system ? PyExc_OSError : PyExc_ValueError, results.error_text().c_str());
  throw py::error_already_set();
}

// The head as (version, settings), and the sequences as (name, header, length, repeats).
py::tuple read_results(const std::string& name) {
  CResultsReader results;
  if (!results.open(name)) raise(results);
  py::dict settings;
  for (const auto& [label, value] : results.header().settings) settings[text_of(label)] = text_of(value);
  py::list sequences;
  py::list repeats;
  for (;;) {
    switch (results.next()) {
      case CResultsReader::item::sequence: {
        const results_sequence& sequence = results.sequence();
        py::object header = py::none();
        if (sequence.full_name) header = text_of(*sequence.full_name);
        repeats = py::list();
        sequences.append(py::make_tuple(text_of(sequence.name), header, sequence.length, repeats));
        break;
      }
      case CResultsReader::item::repeat:
        repeats.append(to_python(results.repeat()));
        break;
      case CResultsReader::item::end:
        return py::make_tuple(results.header().program_version, settings, sequences);
      case CResultsReader::item::failed:
        raise(results);
    }
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  }
}

[[noreturn]] void raise_system_error() {
  PyErr_SetFromErrno(PyExc_OSError);
  throw py::error_already_set();
}

// A file in memory that has a name for as long as it is open.
class CMemoryFile {
 public:
  CMemoryFile() : stream(fdopen(memfd_create("quarvo", MFD_CLOEXEC), "w+"), &std::fclose) {
    if (!stream) raise_system_error();
  }
  std::FILE* out() { return stream.get(); }
  std::string name() {
    if (std::fflush(stream.get()) != 0) raise_system_error();
    return "/proc/self/fd/" + std::to_string(fileno(stream.get()));
  }

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream;
};

py::tuple search(const std::string& sequence, const std::string& name, const py::dict& options) {
  put_in_force(options);
  const search_settings settings = settings_in_force();
  const int mode = global_search_mode;
  CSequence_Mol record(1, 'N');
  fill(record, sequence, name);

  Csat_garbagecollector pool;
  CFastShortcuts shortcuts;
  search_workspace workspace{pool, &shortcuts};
  CSignalsLookedAfter look_after_signals;
  CSearchController controller(1, record, settings, workspace, {[&](unsigned) { look_after_signals(); }, {}});
  CMemoryFile results;
  CsatContainer* found = nullptr;
  {
    const py::gil_scoped_release others_may_run;
    found = &search_with(controller, mode, results.out());
    if (settings.removes_mostly_hidden) CSearchController::remove_mostly_hidden(*found);
  }
  // The report reads the parameters, and another thread may have set its own during the search.
  put_in_force(options);
  creator_message(results.out(), comment_prefix);
  print_search_parameters(results.out(), comment_prefix);
  print_output_format(results.out(), comment_prefix);
  controller.report_SATList(results.out(), found->records);
  print_closing_line(results.out());
  return read_results(results.name());
}

// (name, short name, default, values, help) of each option of a search.
py::list options() {
  init_param();
  parsed_options = {};
  py::list all;
  for (const option_row& row : option_table()) {
    if (!is_search_option(row)) continue;
    py::object standard = py::none();
    const auto read_default = [&](const auto& destination) {
      using type = std::remove_cvref_t<decltype(destination)>;
      if constexpr (std::is_same_v<type, word_destination>) {
        standard = py::str(row.words[static_cast<std::size_t>(*destination.place)].word);
      } else if constexpr (std::is_same_v<type, bool*>) {
        standard = py::bool_(false);
      } else if constexpr (std::is_arithmetic_v<std::remove_pointer_t<type>>) {
        standard = py::cast(*destination);
      }
    };
    std::visit(read_default, row.destination);
    py::list words;
    for (const option_word& word : row.words) words.append(word.word);
    all.append(py::make_tuple(row.long_name, row.short_name, standard, py::tuple(words), help_text(row)));
  }
  return all;
}

}  // namespace

PYBIND11_MODULE(_quarvo, module) {
  module.doc() = "The search and the reader of results; the package quarvo is what to import.";
  module.attr("version") = quarvo_version;
  module.def("search", &search);
  module.def("read", &read_results);
  module.def("options", &options);
}
