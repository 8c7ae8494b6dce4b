#include "report-run.h"

#include <cstdio>
#include <string>

#include "CConvertedFile.h"
#include "CRepeatList.h"
#include "CReportFigures.h"
#include "CResultsReader.h"
#include "companion.h"
#include "option-parser.h"
#include "report-json.h"
#include "report-options.h"
#include "report-page.h"
#include "report-template.h"

namespace {

int end_on_error(const CResultsReader& results, const CConvertedFile& page) {
  std::fputs(results.error_text().c_str(), stderr);
  std::fputs(page.fate(), stderr);
  return companion_status::of(results.error());
}

int end_on_write_failure(const CConvertedFile& page) {
  page.report_write_failure();
  std::fputs(page.fate(), stderr);
  return companion_status::not_written;
}

// Reads the file to its end. Returns false on error, which the reader tells of.
bool read_results(CResultsReader& results, CReportFigures& figures, CRepeatList& list) {
  for (;;) {
    switch (results.next()) {
      case CResultsReader::item::sequence:
        figures.add(results.sequence());
        break;
      case CResultsReader::item::repeat:
        figures.add(results.repeat());
        list.add(figures.current_sequence(), results.repeat());
        break;
      case CResultsReader::item::end:
        return true;
      default:
        return false;
    }
  }
}

std::string without_directory(const std::string& name) { return name.substr(name.rfind('/') + 1); }

}  // namespace

int run_report(int argc, char** argv) {
  if (!read_options(report_option_table(), report_description, companion_status::not_written, argc, argv)) {
    return companion_status::command_line;
  }
  std::string name = report_options.results[0];
  if (name == "-") name = "/dev/stdin";
  if (report_options.output == "-") report_options.output.clear();
  if (is_standard_error({name})) return companion_status::not_written;
  CResultsReader results;
  CConvertedFile page;
  if (!results.open(name)) return end_on_error(results, page);
  if (!page.open(report_options.output, {name})) return companion_status::not_written;

  CReportFigures figures;
  CRepeatList list;
  if (!read_results(results, figures, list)) return end_on_error(results, page);
  const std::string data =
      report_json(results.header(), without_directory(name), figures, list, room_for_data(report_template()));
  write_report_page(page.stream(), report_template(), data);
  return page.finish() ? 0 : end_on_write_failure(page);
}
