// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "boundedcall.h"

#include "interrupt.h"

#include <store/storeupgrade.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

//! The other thread. It lives as long as the process, whose end it may have to force.
class Watch
{
public:
    Watch()
    {
        std::thread([this] { run(); }).detach();
    }

    void begin(BoundedCall::Kind kind, milliseconds limit)
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_isUnderWay = true;
        m_limit = limit;
        m_deadline = steady_clock::now() + limit;
        m_signalDeadline.reset();
        m_hasWritten = m_hasWritten || kind == BoundedCall::Write;
        if (m_isIdle)
            m_begun.notify_one();
    }

    void end()
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_isUnderWay = false;
    }

    milliseconds grace()
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        return currentGrace();
    }

    void onGivingUp(std::function<void(Answer)> end)
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        m_giveUp = std::move(end);
    }

private:
    void run();
    void look();
    milliseconds currentGrace() const
    {
        constexpr milliseconds whileReading(100);
        constexpr milliseconds afterWriting(2000);
        return m_hasWritten ? afterWriting : whileReading;
    }

    std::mutex m_mutex; // guards all below
    std::condition_variable m_begun;
    bool m_isIdle = false;
    bool m_isUnderWay = false;
    bool m_hasWritten = false;
    milliseconds m_limit{0};
    steady_clock::time_point m_deadline;
    std::optional<steady_clock::time_point> m_signalDeadline; // once a signal has been seen
    std::function<void(Answer)> m_giveUp;
};

// Calls follow each other closely, most of them short: each is not worth a wake-up.
void Watch::run()
{
    constexpr milliseconds interval(20);
    std::unique_lock<std::mutex> locker(m_mutex);
    while (true) {
        m_isIdle = true;
        m_begun.wait(locker, [this] { return m_isUnderWay; });
        m_isIdle = false;
        while (m_isUnderWay) {
            look();
            locker.unlock();
            std::this_thread::sleep_for(interval);
            locker.lock();
        }
    }
}

// The end is forced with the mutex locked, so that a call which comes back just now waits.
void Watch::look()
{
    const auto now = steady_clock::now();
    if (Interrupt::signalNumber() != 0 && !m_signalDeadline)
        m_signalDeadline = now + currentGrace();
    if (!m_giveUp)
        return;
    if (CommHistory::isStoreBeingUpgraded()) // which takes as long as the store is large
        m_deadline = now + m_limit;
    if (m_signalDeadline && now >= *m_signalDeadline)
        m_giveUp(Answer::Interrupted);
    else if (now >= m_deadline)
        m_giveUp(Answer::TimedOut);
}

Watch &watch()
{
    static Watch *const instance = new Watch; // outlives all that is destroyed at the end
    return *instance;
}

} // namespace

BoundedCall::BoundedCall(Kind kind, milliseconds limit) { watch().begin(kind, limit); }

BoundedCall::~BoundedCall() { watch().end(); }

milliseconds BoundedCall::grace() { return watch().grace(); }

void BoundedCall::onGivingUp(std::function<void(Answer)> end)
{
    watch().onGivingUp(std::move(end));
}

void BoundedCall::boundTheRest(milliseconds limit) { watch().begin(Read, limit); }
