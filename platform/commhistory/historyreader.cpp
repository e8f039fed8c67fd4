// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "historyreader.h"

#include "historypass_p.h"
#include "mailbox_p.h"

#include <store/store.h>
#include <store/storeconnection.h>

#include <QtCore/QPointer>

namespace CommHistory {

HistoryPortion HistoryPass::failure(HistoryReader::Result result) { return {{}, result, true}; }

HistoryPortion HistoryPass::readFailure(StoreConnection &connection)
{
    connection.warnAbout(StoreProblem::ReadFailed);
    return failure(HistoryReader::ReadFailed);
}

HistoryPortion HistoryPass::next(StoreConnection *connection)
{
    if (!connection)
        return failure(m_isBegun ? HistoryReader::ReadFailed : HistoryReader::NoStore);
    m_isBegun = true;
    if (m_store.isEmpty()) // as long as the store is of the first format, too
        m_store = connection->identity();
    if (m_store != connection->identity()) {
        connection->warnAbout(StoreProblem::Replaced);
        return failure(HistoryReader::ReadFailed);
    }
    return read(*connection);
}

class HistoryReaderPrivate
{
public:
    explicit HistoryReaderPrivate(HistoryReader *reader)
        : q(reader)
        , mailbox(std::make_shared<Mailbox>(reader))
    {
    }
    ~HistoryReaderPrivate() { mailbox->close(); }

    void start(std::unique_ptr<HistoryPass> newPass, Store::Access newAccess)
    {
        pass = std::move(newPass);
        access = newAccess;
        requestPortion();
    }

    HistoryReader *q;
    MailboxPointer mailbox;
    std::shared_ptr<HistoryPass> pass;
    Store::Access access = Store::Access::Read;

private:
    void requestPortion();
    void take(const HistoryPortion &portion);
    void hand(const HistoryPortion &portion);

    QList<HistoryPortion> m_taken; // the first one is with the receiver
};

void HistoryReaderPrivate::requestPortion()
{
    const auto request = [this, pass = pass, mailbox = mailbox](StoreConnection *connection) {
        const HistoryPortion portion = pass->next(connection);
        mailbox->post([this, portion] { take(portion); });
    };
    Store::instance().post(access, request);
}

//! A receiver may run the event loop within its slot: what comes meanwhile waits until it returns.
void HistoryReaderPrivate::take(const HistoryPortion &portion)
{
    m_taken.append(portion);
    if (m_taken.size() > 1)
        return;
    const QPointer<HistoryReader> guard(q);
    while (guard && !m_taken.isEmpty()) {
        hand(m_taken.first());
        if (guard)
            m_taken.removeFirst();
    }
}

void HistoryReaderPrivate::hand(const HistoryPortion &portion)
{
    const QPointer<HistoryReader> guard(q);
    const bool isLast = portion.isLast;
    const HistoryReader::Result result = portion.result;
    if (!isLast)
        requestPortion(); // is read while the receiver works on this one
    const QList<HistoryEntry> entries = portion.entries; // the receiver may delete the reader
    if (!entries.isEmpty())
        Q_EMIT q->entriesRead(entries);
    if (guard && isLast)
        Q_EMIT guard->ended(result);
}

HistoryReader::HistoryReader(QObject *parent)
    : QObject(parent)
    , d(new HistoryReaderPrivate(this))
{
}

HistoryReader::~HistoryReader() = default;

void HistoryReader::read(const HistorySelection &selection)
{
    d->start(newSelectionPass(selection), Store::Access::Read);
}

void HistoryReader::readChanges(const HistoryPosition &since, int portion)
{
    // A store of the first format has no numbers of changes.
    d->start(newChangesPass(since, portion), Store::Access::Change);
}

void HistoryReader::count(const HistorySelection &selection, Key key)
{
    d->start(newCountPass(selection, key), Store::Access::Read);
}

HistoryPosition HistoryReader::position() const
{
    return d->pass ? d->pass->position : HistoryPosition();
}

QList<HistoryTally> HistoryReader::tallies() const
{
    return d->pass ? d->pass->tallies : QList<HistoryTally>();
}

} // namespace CommHistory

#include "moc_historyreader.cpp"
