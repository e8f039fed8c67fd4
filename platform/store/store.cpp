// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "store.h"

#include "logging.h"
#include "storeconnection.h"
#include "storefiles.h"

#include <chrono>
#include <future>
#include <system_error>

namespace CommHistory {

namespace {

constexpr int ReadPatienceMsecs = 3000;
constexpr int BusyMemoryMsecs = 10000; // for which reads do not try again

HistoryCopier historyCopier = nullptr;

bool isWriting(Store::Access access)
{
    return access == Store::Access::Write || access == Store::Access::Change;
}

} // namespace

Store &Store::instance()
{
    // Constructed before the store, since it still logs when the process ends.
    lcStore();
    lcStoreDatabase();
    lcAnnouncement();
    static Store store;
    return store;
}

void Store::setHistoryCopier(HistoryCopier copier) { historyCopier = copier; }

Store::Store()
    : m_directory(StorePlace().absolute()) // the process may change its working directory later
{
}

Store::~Store()
{
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        enqueueGathered();
        m_ending = true;
    }
    wake();
    if (m_thread.joinable())
        m_thread.join();
    close();
}

void Store::post(Access access, Request request)
{
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        enqueueGathered();
        m_queue.push_back({access, std::move(request)});
    }
    wake();
}

//! Has the store's thread look at the queue. Where the system gives none, all that waits fails,
//! and the next request tries again.
void Store::wake()
{
    std::deque<Entry> failed;
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        try {
            if (!m_thread.joinable() && !m_queue.empty())
                m_thread = std::thread(&Store::work, this);
        } catch (const std::system_error &) {
            failed.swap(m_queue);
        }
    }
    m_changed.notify_one();
    if (!failed.empty())
        m_directory.place().warnAbout(StoreProblem::NoThread);
    for (const Entry &entry : failed)
        entry.request(nullptr);
}

void Store::run(Access access, const Request &request)
{
    if (runHere(access, request))
        return;
    const auto done = std::make_shared<std::promise<void>>();
    post(access, [&request, done](StoreConnection *connection) {
        request(connection);
        done->set_value();
    });
    done->get_future().wait();
}

bool Store::runHere(Access access, const Request &request)
{
    std::unique_lock<std::mutex> locker(m_mutex);
    enqueueGathered();
    if (!m_isOpen || m_isWorking || !m_queue.empty())
        return false;
    m_isWorking = true;
    locker.unlock();
    request(connection(access));
    locker.lock();
    m_isWorking = false;
    const bool isAwaited = m_ending || !m_queue.empty();
    locker.unlock();
    if (isAwaited)
        m_changed.notify_one();
    return true;
}

bool Store::isReadable(Access access)
{
    if (m_isOpen)
        return true;
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        if (!m_refusing.hasExpired())
            return false;
    }
    const auto isTried = std::make_shared<bool>(false);
    post(access, [this, isTried](StoreConnection *) {
        const std::lock_guard<std::mutex> locker(m_mutex);
        *isTried = true;
        m_tried.notify_all();
    });
    // A request before this one may open the store; its work is not waited for.
    std::unique_lock<std::mutex> locker(m_mutex);
    const auto isKnown = [&] { return *isTried || m_isOpen; };
    while (!m_tried.wait_for(locker, std::chrono::milliseconds(ReadPatienceMsecs), isKnown)) {
        if (!m_isHeldUp)
            continue; // opening takes its time
        m_refusing.setRemainingTime(BusyMemoryMsecs);
        m_directory.place().warnAbout(StoreProblem::Busy);
        break;
    }
    return m_isOpen;
}

bool Store::gather(const void *owner, int id, std::function<Request(QVector<int>)> make)
{
    const std::lock_guard<std::mutex> locker(m_mutex);
    const bool isFirst = m_gathering.owner != owner;
    if (isFirst) {
        enqueueGathered();
        m_gathering.owner = owner;
        m_gathering.make = std::move(make);
    }
    m_gathering.ids.append(id);
    return isFirst;
}

void Store::endGathering()
{
    {
        const std::lock_guard<std::mutex> locker(m_mutex);
        enqueueGathered();
    }
    wake();
}

void Store::enqueueGathered()
{
    if (m_gathering.owner)
        m_queue.push_back({Access::Write, m_gathering.make(m_gathering.ids)});
    m_gathering = Gathering();
}

void Store::work()
{
    std::unique_lock<std::mutex> locker(m_mutex);
    while (true) {
        m_changed.wait(locker, [this] { return !m_isWorking && (m_ending || !m_queue.empty()); });
        if (m_queue.empty())
            return;
        const Entry entry = std::move(m_queue.front());
        m_queue.pop_front();
        m_isWorking = true;
        locker.unlock();
        entry.request(connection(entry.access));
        locker.lock();
        m_isWorking = false;
    }
}

StoreConnection *Store::connection(Access access)
{
    // A store that was replaced under the process would take writes that nobody sees. The request
    // at hand may name ids of that one, so only the next one gets the store that is there now.
    if (m_connection && !m_connection->isInPlace()) {
        close();
        setOpen(false);
        m_lastProblem = StoreProblem::Replaced;
        m_directory.place().warnAbout(StoreProblem::Replaced);
        return nullptr;
    }
    const bool isReadOnly = m_connection && m_connection->mode() == StoreConnection::Mode::ReadOnly;
    if (isReadOnly && isWriting(access))
        close();
    if (!m_connection) {
        const StoreProblem problem = open(access);
        // Every request tries again, since the user may have put it right meanwhile, but
        // says so only once.
        const bool isTold = problem == m_lastProblem
            || (problem == StoreProblem::Absent && access == Access::LookUp);
        if (!isTold && problem != StoreProblem::None)
            m_directory.place().warnAbout(problem);
        if (!isTold)
            m_lastProblem = problem;
        setOpen(problem == StoreProblem::None);
    }
    return m_connection.get();
}

void Store::setOpen(bool isOpen)
{
    const std::lock_guard<std::mutex> locker(m_mutex);
    m_isOpen = isOpen;
    m_tried.notify_all();
}

void Store::close()
{
    if (!m_connection)
        return;
    // Closing writes, too, what was opened for that.
    if (m_connection->mode() == StoreConnection::Mode::ReadWrite) {
        const StoreLockHolder holder(m_lock);
        m_connection.reset();
    }
    m_connection.reset();
}

StoreProblem Store::open(Access access)
{
    StoreProblem problem = m_directory.place().look().problem;
    if (problem == StoreProblem::Absent && access != Access::Write)
        return problem;
    if (problem != StoreProblem::None && problem != StoreProblem::Absent)
        return problem;
    // Reading, too, needs a directory that can be written: the database keeps the logs that
    // its readers and writers share there.
    problem = m_directory.claim(m_lock);
    if (problem != StoreProblem::None)
        return problem;
    // Somebody waits for a read in the event loop, perhaps for one after the other.
    if (!isWriting(access) && !m_busy.hasExpired())
        return StoreProblem::Busy;
    m_isHeldUp = isWriting(access);
    const StoreLockHolder holder(m_lock,
                                 isWriting(access) ? StoreLock::PatienceMsecs : ReadPatienceMsecs);
    int format = 0;
    problem = holder.isHeld() ? prepare(access, &format) : StoreProblem::Busy;
    m_isHeldUp = false;
    if (!holder.isHeld())
        m_busy.setRemainingTime(BusyMemoryMsecs);
    if (problem != StoreProblem::None)
        return problem;
    m_connection = StoreConnection::open(m_directory, m_lock,
                                         isWriting(access) ? StoreConnection::Mode::ReadWrite
                                                           : StoreConnection::Mode::ReadOnly,
                                         format);
    m_directory.makePrivate();
    if (!m_connection)
        return StoreProblem::Damaged;
    if (!m_connection->isInPlace()) {
        m_connection.reset();
        return StoreProblem::Replaced;
    }
    return StoreProblem::None;
}

//! Makes the store what the access needs. Another process may have been faster, or killed on the
//! way. The lock is held.
StoreProblem Store::prepare(Access access, int *format)
{
    const StorePlace::Finding found = m_directory.place().look();
    *format = found.format;
    StoreProblem problem = found.problem;
    if (problem == StoreProblem::Absent && access == Access::Write) {
        problem = m_directory.create(m_lock);
        *format = StoreFiles::Format;
    } else if (problem == StoreProblem::None) {
        problem = m_directory.finish(m_lock, found.format);
    }
    if (problem == StoreProblem::None)
        problem = StoreConnection::probeFiles(m_directory.databasePath());
    if (problem == StoreProblem::None && isWriting(access) && *format != StoreFiles::Format) {
        problem = m_directory.upgrade(m_lock, *format, historyCopier);
        *format = StoreFiles::Format;
    }
    return problem;
}

} // namespace CommHistory
