#include "report-run.h"

#include <cstdio>
#include <string>

#include "COutputFile.h"
#include "CRepeatList.h"
#include "CReportFigures.h"
#include "CResultsReader.h"
#include "report-command-line.h"
#include "report-json.h"
#include "report-page.h"
#include "report-template.h"

namespace {

int status_of(const results_trouble& trouble) {
  switch (trouble.kind) {
    case results_trouble::kind_type::not_opened:
    case results_trouble::kind_type::not_read:
      return report_status_not_read;
    case results_trouble::kind_type::unfinished:
      return report_status_unfinished;
    default:
      return report_status_not_results;
  }
}

int end_on_trouble(const CResultsReader& results) {
  std::fputs(results.trouble_text().c_str(), stderr);
  return status_of(results.trouble());
}

// Returns false when the page cannot be written there.
bool claim_page(COutputFile& page, const report_request& request) {
  if (request.page_name.empty()) {
    page.claim_standard_output();
    return true;
  }
  if (page.claim(request.page_name)) {
    if (!page.is_same_file_as(request.results_name)) return true;
    std::fputs("Sorry! The page would replace the results file. Please give it another name.\n", stderr);
  }
  page.report_open_failure(request.page_name);
  return false;
}

// Reads the file to its end. Returns false on trouble, which the reader tells of.
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

// An older page is left as it is until all results have been read.
int run_report(int argc, char** argv) {
  const report_request request = parse_report_command_line(argc, argv);
  CResultsReader results;
  if (!results.open(request.results_name)) return end_on_trouble(results);
  COutputFile page("as report page.");
  if (!claim_page(page, request)) return report_status_not_written;

  CReportFigures figures;
  CRepeatList list;
  if (!read_results(results, figures, list)) {
    page.abandon();
    return end_on_trouble(results);
  }
  const std::string data = report_json(results.header(), without_directory(request.results_name), figures, list,
                                       room_for_data(report_template()));
  if (!page.start()) {
    page.report_open_failure(request.page_name);
    return report_status_not_written;
  }
  write_report_page(page.stream(), report_template(), data);
  if (page.close()) return 0;
  page.report_write_failure();
  return report_status_not_written;
}
