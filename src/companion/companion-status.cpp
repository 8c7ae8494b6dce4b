#include "companion.h"

int companion_status::of(const results_trouble& trouble) {
  switch (trouble.kind) {
    case results_trouble::kind_type::not_opened:
    case results_trouble::kind_type::not_read:
      return not_read;
    case results_trouble::kind_type::unfinished:
      return unfinished;
    default:
      return not_results;
  }
}
