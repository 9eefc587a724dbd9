// A progress line on standard error while the runner waits on long work without printing (the
// part file loading, the plug-in building its dialog, a command on a large mould): shown only
// when standard error is a terminal and the work has taken longer than a moment (a second), then
// rewritten in place a few times a second and wiped when the work ends or anything is printed.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

namespace runner {

class Progress {
public:
    // Nothing is ever shown when shown is false. after: how long work runs before its line shows.
    Progress(std::ostream& terminal, bool shown, std::chrono::milliseconds after);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Starts timing work; describe says where it stands ("reading A100.part.json: 1,200 of 50,000
    // bodies") and is called on the progress thread.
    void Start(std::function<std::string()> describe);
    // The work ended, or something is about to be printed: its line is wiped. Cheap when idle.
    void Stop();

private:
    void Run();
    void Show(const std::string& line);  // with mutex_ held
    void Wipe();                         // with mutex_ held

    std::ostream& terminal_;
    const bool shown_;
    const std::chrono::milliseconds after_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::function<std::string()> describe_;  // empty while no work is timed
    std::chrono::steady_clock::time_point started_;
    size_t width_ = 0;  // of the line on the terminal; 0 when none is shown
    bool quit_ = false;
    std::thread thread_;
};

// 1234567 -> "1,234,567".
std::string Thousands(long n);

}  // namespace runner
