#include "companion.h"

int companion_status::of(const results_error& error) {
  switch (error.kind) {
    case results_error::kind_type::not_opened:
    case results_error::kind_type::not_read:
      return not_read;
    case results_error::kind_type::unfinished:
      return unfinished;
    default:
      return not_results;
  }
}
