#include "CProgressMeter.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr auto on_a_terminal = std::chrono::milliseconds(250);
constexpr auto between_lines = std::chrono::seconds(5);
constexpr int width_of_bar = 24;
constexpr const char* to_line_begin = "\r\x1b[K";

template <typename... Values>
std::string formatted(const char* format, Values... values) {
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

std::string as_time(double seconds) {
  const auto whole = static_cast<long long>(seconds + 0.5);
  if (whole < 3600) return formatted("%lld:%02lld", whole / 60, whole % 60);
  return formatted("%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
}

}  // namespace

std::string with_commas(std::int64_t number) {
  std::string text = std::to_string(number);
  for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3) {
    text.insert(static_cast<std::size_t>(at), ",");
  }
  return text;
}

CProgressMeter::CProgressMeter(style its_style, std::int64_t its_whole) : how(its_style), whole(its_whole) {
  if (how != style::none) teller = std::thread([this] { tell(); });
}

void CProgressMeter::add_searched(std::int64_t its_symbols, double its_bytes) {
  symbols += its_symbols;
  bytes += static_cast<std::int64_t>(its_bytes);
}

void CProgressMeter::tell() {
  std::unique_lock lock(guard);
  while (!is_stopped) {
    if (how == style::terminal) std::fprintf(stderr, "%s%s", to_line_begin, line().c_str());
    changed.wait_for(lock, how == style::terminal ? std::chrono::nanoseconds(on_a_terminal) : between_lines,
                     [this] { return is_stopped; });
    if (how == style::lines) std::fprintf(stderr, "%s\n", line().c_str());
  }
}

void CProgressMeter::stop() {
  if (!teller.joinable()) return;
  {
    const std::lock_guard lock(guard);
    is_stopped = true;
  }
  changed.notify_all();
  teller.join();
  if (how == style::terminal) std::fputs(to_line_begin, stderr);
}

std::string CProgressMeter::line() const {
  const double elapsed = seconds();
  const double rate = static_cast<double>(symbols) / 1e6 / std::max(elapsed, 1e-3);
  std::string text;
  if (whole > 0) {
    const double share = std::min(1.0, static_cast<double>(bytes) / static_cast<double>(whole));
    const int full = static_cast<int>(share * width_of_bar);
    text = '[' + std::string(static_cast<std::size_t>(full), '#') +
           std::string(static_cast<std::size_t>(width_of_bar - full), '.') + formatted("] %3.0f%%  ", 100 * share);
    text += formatted("%.2f Mb/s  ", rate);
    if (share > 0) text += as_time(elapsed * (1 - share) / share) + " left  ";
  } else {
    text = with_commas(symbols) + " bp  " + formatted("%.2f Mb/s  ", rate);
  }
  return text + with_commas(repeats) + " repeats";
}

std::string CProgressMeter::summary() const {
  const double elapsed = seconds();
  return with_commas(repeats) + (repeats == 1 ? " repeat in " : " repeats in ") + with_commas(sequences) +
         (sequences == 1 ? " sequence of " : " sequences of ") + with_commas(symbols) + " bp, in " +
         formatted("%.1f s (%.2f Mb/s)", elapsed, static_cast<double>(symbols) / 1e6 / std::max(elapsed, 1e-3));
}
