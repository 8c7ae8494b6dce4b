#include "report-template.h"

extern "C" {
extern const char quarvo_report_template_begin[];
extern const char quarvo_report_template_end[];
}

std::string_view report_template() {
  return {quarvo_report_template_begin,
          static_cast<std::string_view::size_type>(quarvo_report_template_end - quarvo_report_template_begin)};
}
