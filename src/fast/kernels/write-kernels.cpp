// Writes the alignment programs of the default scoring as C++, while Quarvo is built: a file for each unit length, and
// one with the table of all.
//
//   write-kernels LONGEST DIRECTORY    unit lengths 1 to LONGEST; the directory is there

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "alignment-program.h"

namespace {

using slot = alignment_program::slot;

// A mismatch and an indel cost 5, longer repeats are preferred, the score must reach 6 and the unit length.
alignment_bound default_bound(unsigned L) {
  const int b = static_cast<int>(L);
  return {L, 5, 5, b, std::max(6, b)};
}

// Writes the body of one program. Planes become constants named by the order in which they are made, since their slots
// are used again; accumulators are variables.
class CBodyWriter {
 public:
  CBodyWriter(const alignment_program& its_program, std::ostream& stream)
      : program(its_program),
        out(stream),
        accumulators(its_program.accumulators.begin(), its_program.accumulators.end()),
        plane_in(its_program.slots, 0) {}

  void write() {
    out << "    const vec zeros{};\n    const vec ones = ~zeros;\n";
    for (const slot s : accumulators) out << "    vec " << read(s) << " = zeros;\n";
    for (const auto& row : program.rows) {
      for (const auto& op : row.compares) {
        define(op.matches, "lanes.matches(" + std::to_string(op.a) + ", " + std::to_string(op.b) + ")");
      }
      for (const auto& op : row.runs) define(op.to, hit(op.hit, op.matches));
      for (const auto& op : row.forks) {
        define(op.to, any_of({hit(op.hit, op.hit_matches), miss(op.miss, op.miss_matches)}));
      }
      for (const auto& op : row.joins) {
        define(op.to, any_of({hit(op.hit, op.hit_matches), miss(op.miss, op.hit_matches),
                              miss(op.insertion, op.insertion_matches), miss(op.deletion, op.deletion_matches)}));
      }
      for (const auto& op : row.hits) add(op.to, hit(op.from, op.matches));
      for (const auto& op : row.misses) {
        std::vector<std::string> terms;
        for (const slot from : op.from) terms.push_back(from == alignment_program::zero ? "" : read(from));
        add(op.to, miss(any_of(terms), op.matches));
      }
    }
    out << "    return " << read(alignment_program::keep) << ";\n";
  }

 private:
  const alignment_program& program;
  std::ostream& out;
  std::set<slot> accumulators;
  std::vector<unsigned> plane_in;  // the plane that is in each slot
  unsigned planes = 0;

  std::string read(slot s) const {
    if (s == alignment_program::zero) return "zeros";
    if (s == alignment_program::ones) return "ones";
    return accumulators.contains(s) ? "any" + std::to_string(s) : "plane" + std::to_string(plane_in[s]);
  }

  // A plane may be made of what was in its slot.
  void define(slot to, const std::string& value) {
    plane_in[to] = ++planes;
    out << "    const vec " << read(to) << " = " << value << ";\n";
  }

  void add(slot to, const std::string& value) { out << "    " << read(to) << " |= " << value << ";\n"; }

  // An empty text stands for no plane at all.
  std::string hit(slot from, slot matches) const {
    return from == alignment_program::zero ? "" : "(" + read(from) + " & " + read(matches) + ")";
  }
  std::string miss(slot from, slot matches) const {
    return from == alignment_program::zero ? "" : miss(read(from), matches);
  }
  std::string miss(const std::string& from, slot matches) const {
    return matches == alignment_program::zero ? from : "((" + from + ") & ~" + read(matches) + ")";
  }

  static std::string any_of(const std::vector<std::string>& terms) {
    std::string all;
    for (const std::string& term : terms) {
      if (!all.empty() && !term.empty()) all += " | ";
      all += term;
    }
    return all;
  }
};

// Where a text differs from unit length to unit length it has the mark @.
constexpr const char* kernel_head =
    R"(// The alignment program of unit length @ for the default scoring; written by write-kernels.

#include "vector-targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "alignment-kernel-@.cpp"
#include <hwy/foreach_target.h>

#include "alignment-kernel-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_alignment_kernel_@ {
namespace HWY_NAMESPACE {
using namespace quarvo_alignment_kernel::HWY_NAMESPACE;

struct kernel {
  static vec kept(const CLanes& lanes) {
)";
constexpr const char* kernel_tail = R"(  }
};

void run(const CBitPlanes& planes, CPositionSet& kept) { run_kernel<kernel>(planes, kept); }

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_alignment_kernel_@
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_alignment_kernel_@ {
HWY_EXPORT(run);
}

void run_alignment_kernel_@(const CBitPlanes& planes, CPositionSet& kept);
void run_alignment_kernel_@(const CBitPlanes& planes, CPositionSet& kept) {
  using namespace quarvo_alignment_kernel_@;
  HWY_DYNAMIC_DISPATCH(run)(planes, kept);
}
#endif
)";
constexpr const char* table_head = R"(// All kernels; written by write-kernels.

#include "alignment-kernels.h"

#include <array>

)";
constexpr const char* table_tail = R"(  }};
  return kernels;
}
)";

std::string for_unit_length(unsigned L, const char* text) {
  std::string made;
  for (; *text != '\0'; ++text) made += *text == '@' ? std::to_string(L) : std::string(1, *text);
  return made;
}

struct kernel_program {
  alignment_bound bound;
  alignment_program program;
};

void write_kernel(const kernel_program& kernel, std::ostream& out) {
  out << for_unit_length(kernel.bound.L, kernel_head);
  CBodyWriter(kernel.program, out).write();
  out << for_unit_length(kernel.bound.L, kernel_tail);
}

void write_table(const std::vector<kernel_program>& kernels, std::ostream& out) {
  out << table_head;
  for (const auto& kernel : kernels) {
    out << for_unit_length(kernel.bound.L,
                           "void run_alignment_kernel_@(const CBitPlanes& planes, CPositionSet& kept);\n");
  }
  out << "\nstd::span<const alignment_kernel> alignment_kernels() {\n"
         "  static constexpr std::array<alignment_kernel, "
      << kernels.size() << "> kernels{{\n";
  for (const auto& [bound, program] : kernels) {
    out << "      {{" << bound.L << ", " << bound.mismatch_penalty << ", " << bound.indel_penalty << ", " << bound.b
        << ", " << bound.T << "}, " << program.reach << ", run_alignment_kernel_" << bound.L << "},\n";
  }
  out << table_tail;
}

std::vector<kernel_program> make_programs(unsigned longest) {
  std::vector<kernel_program> made;
  for (unsigned L = 1; L <= longest; ++L) {
    const alignment_bound bound = default_bound(L);
    made.push_back({bound, make_alignment_program(bound)});
    if (made.back().program.is_empty()) throw std::runtime_error("no program for unit length " + std::to_string(L));
  }
  return made;
}

void write_file(const std::string& name, const std::function<void(std::ostream&)>& write) {
  std::ofstream out(name);
  write(out);
  out.close();
  if (!out) throw std::runtime_error("cannot write " + name);
}

void write_all(unsigned longest, const std::string& directory) {
  const std::vector<kernel_program> kernels = make_programs(longest);
  for (const kernel_program& kernel : kernels) {
    write_file(directory + "/" + for_unit_length(kernel.bound.L, "alignment-kernel-@.cpp"),
               [&kernel](std::ostream& out) { write_kernel(kernel, out); });
  }
  write_file(directory + "/alignment-kernel-table.cpp", [&kernels](std::ostream& out) { write_table(kernels, out); });
}

}  // namespace

int main(int argc, char** argv) {
  unsigned longest = 0;
  if (argc != 3 || std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), longest).ec != std::errc()) {
    std::fputs("usage: write-kernels LONGEST DIRECTORY\n", stderr);
    return 1;
  }
  try {
    write_all(longest, argv[2]);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "write-kernels: %s\n", fault.what());
    return 1;
  }
  return 0;
}
