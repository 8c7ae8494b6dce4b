#pragma once

#include <string>

#include "CRepeatList.h"
#include "CReportFigures.h"
#include "results-records.h"

// The data of a page as the JSON that web/report-data.schema.json describes, at most `room` bytes of it as long as that
// holds the figures that are never cut (some hundred kilobytes). results_name: the results file, without its directory.
//
// Coarsens the tracks of the figures and cuts the list of repeats until they fit.
std::string report_json(const results_header& header, const std::string& results_name, CReportFigures& figures,
                        CRepeatList& list, std::size_t room);
