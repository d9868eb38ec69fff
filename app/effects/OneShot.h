// An answer that must be given exactly once, by whichever of several racing
// parties comes first: a child's completion or a watchdog.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace velmar {

class OneShot {
public:
    /// True for the first caller only.
    bool claim() {
        {
            std::lock_guard guard(lock_);
            if (claimed_)
                return false;
            claimed_ = true;
        }
        claimedChanged_.notify_all();
        return true;
    }

    /// After `seconds`, on a worker thread, runs `answer` if nobody has
    /// claimed `shot` by then. A claim before the deadline ends the wait early.
    static void watchdog(std::shared_ptr<OneShot> shot, double seconds, std::function<void()> answer) {
        const auto deadline = std::chrono::steady_clock::now() +
                              std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                  std::chrono::duration<double>(seconds));
        std::thread([shot = std::move(shot), deadline, answer = std::move(answer)] {
            {
                std::unique_lock held(shot->lock_);
                shot->claimedChanged_.wait_until(held, deadline, [&] { return shot->claimed_; });
            }
            if (shot->claim())
                answer();
        }).detach();
    }

private:
    std::mutex lock_;
    std::condition_variable claimedChanged_;
    bool claimed_ = false;
};

}  // namespace velmar
