#include "Progress.hpp"

#include "Output.hpp"

namespace runner {

namespace {

const std::chrono::milliseconds kRedraw(250);

}  // namespace

std::string Thousands(long n) {
    std::string digits = std::to_string(n < 0 ? -n : n);
    for (size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
    return (n < 0 ? "-" : "") + digits;
}

Progress::Progress(std::ostream& terminal, bool shown, std::chrono::milliseconds after)
    : terminal_(terminal), shown_(shown), after_(after) {
    if (shown_) thread_ = std::thread([this] { Run(); });
}

Progress::~Progress() {
    if (!shown_) return;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        Wipe();
        quit_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void Progress::Start(std::function<std::string()> describe) {
    if (!shown_) return;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        describe_ = std::move(describe);
        started_ = std::chrono::steady_clock::now();
    }
    wake_.notify_all();
}

void Progress::Stop() {
    if (!shown_) return;
    std::lock_guard<std::mutex> lock(mutex_);
    if (!describe_) return;
    // Work that outlasted the wait shows where it ended, even between two redraws.
    if (std::chrono::steady_clock::now() - started_ >= after_) Show(describe_());
    Wipe();
    describe_ = nullptr;
}

void Progress::Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!quit_) {
        if (!describe_) {
            wake_.wait(lock);
            continue;
        }
        const auto due = started_ + after_;
        if (std::chrono::steady_clock::now() < due) {
            wake_.wait_until(lock, due);
            continue;
        }
        Show(describe_());
        wake_.wait_for(lock, kRedraw);
    }
}

void Progress::Show(const std::string& line) {
    const std::string text = "vornadel-host: " + line + " ...";
    const size_t width = static_cast<size_t>(DisplayWidth(text));
    terminal_ << '\r' << text << std::string(width_ > width ? width_ - width : 0, ' ') << std::flush;
    width_ = width;
}

void Progress::Wipe() {
    if (width_ == 0) return;
    terminal_ << '\r' << std::string(width_, ' ') << '\r' << std::flush;
    width_ = 0;
}

}  // namespace runner
