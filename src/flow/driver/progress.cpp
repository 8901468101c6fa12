#include "flow/driver/progress.h"

#include <algorithm>
#include <ostream>

namespace xfc::flow {

namespace {

using namespace std::chrono_literals;

constexpr auto quiet_time = 500ms;
constexpr auto between_drawings = 100ms;
constexpr std::size_t bar_width = 24;

}  // namespace

progress_bar::progress_bar(std::ostream& out, bool shown)
    : out_(out), shown_(shown), next_(std::chrono::steady_clock::now() + quiet_time) {}

progress_bar::~progress_bar() { clear(); }

void progress_bar::show(std::string_view work, std::size_t done, std::size_t total) {
    const auto now = std::chrono::steady_clock::now();
    if (!shown_ || now < next_) {
        return;
    }
    next_ = now + between_drawings;
    visible_ = true;
    std::string text = "\r\x1b[K";
    if (total != 0) {
        const std::size_t full = std::min(bar_width, done * bar_width / total);
        text += "[" + std::string(full, '#') + std::string(bar_width - full, ' ') + "] ";
        text += std::to_string(std::min<std::size_t>(100, done * 100 / total)) + " % ";
    }
    text += work;
    out_ << text << std::flush;
}

void progress_bar::clear() {
    if (visible_) {
        out_ << "\r\x1b[K" << std::flush;
        visible_ = false;
    }
}

}  // namespace xfc::flow
