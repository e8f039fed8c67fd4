// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "storedirectory.h"
#include "storelock.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QVector>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace CommHistory {

class StoreConnection;

//! The store of the process: where it is, the one connection to it and the thread that
//! works on it. Requests are carried out in the order in which they came; the process ends
//! when all that were taken are done. A forked child must not use it: it has no thread.
class Store
{
public:
    //! Gets null when the store cannot be used, after the warning that says why.
    using Request = std::function<void(StoreConnection *)>;

    enum class Access {
        Read,
        LookUp, //!< as Read, but silent about a store that is absent: it may come to be
        Change, //!< brings an older store up to date
        Write   //!< the same, and makes the store when it is absent
    };

    static Store &instance();

    //! Gives it what copies an older store; before the first write, and for good.
    static void setHistoryCopier(HistoryCopier copier);

    //! Has the store's thread carry out the request.
    void post(Access access, Request request);
    //! The same, and waits until it is done; when the store's thread has nothing to do, the calling
    //! thread does it, since waking that one and being woken takes longer than a short read.
    void run(Access access, const Request &request);
    //! Whether the store can be used; waits for the attempt to open it when it is not open yet,
    //! but not as long as a write does that another process holds up.
    bool isReadable(Access access);

    //! Gathers deletions into one request until the turn of the event loop ends (endGathering())
    //! or any other request comes, so that requests keep their order.
    //! \param make  gives the request for the ids gathered for \a owner
    //! \return true for the first id of a gathering
    bool gather(const void *owner, int id, std::function<Request(QVector<int>)> make);
    void endGathering();

private:
    struct Entry
    {
        Access access;
        Request request;
    };
    struct Gathering
    {
        const void *owner = nullptr;
        QVector<int> ids;
        std::function<Request(QVector<int>)> make;
    };

    Store();
    ~Store();
    Q_DISABLE_COPY(Store)

    void enqueueGathered(); // m_mutex is locked
    void wake();
    [[nodiscard]] bool runHere(Access access, const Request &request);
    void work();
    StoreConnection *connection(Access access);
    void setOpen(bool isOpen);
    StoreProblem open(Access access);
    StoreProblem prepare(Access access, int *format);
    void close();

    StoreDirectory m_directory;
    std::mutex m_mutex;                // guards m_queue to m_refusing
    std::condition_variable m_changed; // m_queue, m_isWorking or m_ending
    std::condition_variable m_tried;   // to open the store
    std::deque<Entry> m_queue;
    Gathering m_gathering;
    bool m_isWorking = false; // some thread carries out a request
    bool m_ending = false;
    QDeadlineTimer m_refusing; // reads, until then: a write keeps the store's thread
    std::atomic<bool> m_isOpen{false};
    // A write waits for the lock, or brings the store up to date.
    std::atomic<bool> m_isHeldUp{false};

    // What only the thread touches that carries out a request.
    StoreLock m_lock;
    QDeadlineTimer m_busy; // expired unless the lock was kept by another process just now
    std::unique_ptr<StoreConnection> m_connection;
    StoreProblem m_lastProblem = StoreProblem::None;

    std::thread m_thread; // starts with the first request
};

} // namespace CommHistory
