// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <korvasync/historyitem.h>
#include <korvasync/korvasyncexport.h>

#include <QtCore/QList>
#include <QtCore/QObject>

#include <memory>

namespace KorvaSyncIf {

class PendingHistoryPrivate;
class PendingChangesPrivate;
class PendingCountsPrivate;

//! Result of HistoryInterface::query(), in portions.
//!
//! Life: the interface creates it, as its child. A filter that is refused sets isError() before
//! the call returns. In every case finished() comes exactly once, on a later turn of the event
//! loop, after the last portion(); then the object deletes itself. Deleting it, or the interface,
//! ends the request, and nothing is emitted any more.
//!
//! While the receiver works on a portion, the store reads the next one and no further: there are
//! never more than two in memory, and a slow receiver holds the store back, not other requests.
//! Each portion is read by itself. What is written meanwhile appears when its place in the order
//! still lies ahead; no item comes twice, and none that stays in its place is left out.
class KORVASYNC_EXPORT PendingHistory : public QObject
{
    Q_OBJECT
public:
    ~PendingHistory() override;

    //! True after a failure; what was handed out before it is right, but not all.
    bool isError() const { return error() != HistoryError::None; }
    HistoryError error() const;

Q_SIGNALS:
    //! The next items in the order of the filter; never empty.
    void portion(const QList<KorvaSyncIf::HistoryItem> &items);
    void finished(KorvaSyncIf::PendingHistory *pending);

private:
    friend class HistoryInterface;
    PendingHistory(const HistoryFilter &filter, QObject *parent);

    std::unique_ptr<PendingHistoryPrivate> d;
};

//! Result of HistoryInterface::changes(). Lives, and comes in portions, as PendingHistory does.
class KORVASYNC_EXPORT PendingChanges : public QObject
{
    Q_OBJECT
public:
    ~PendingChanges() override;

    bool isError() const { return error() != HistoryError::None; }
    HistoryError error() const;
    //! Where the next call goes on; empty until finished() is emitted without an error. Printable
    //! ASCII without blanks, 64 characters at most; means something to this store alone.
    QString cursor() const;

Q_SIGNALS:
    //! The next changes in the order in which they happened, an item once for all that became of
    //! it; never empty. One that is changed during the request may come again.
    void portion(const QList<KorvaSyncIf::HistoryChange> &changes);
    void finished(KorvaSyncIf::PendingChanges *pending);

private:
    friend class HistoryInterface;
    PendingChanges(const QString &cursor, int portion, QObject *parent);

    std::unique_ptr<PendingChangesPrivate> d;
};

//! Result of HistoryInterface::counts(). Lives as PendingHistory does.
class KORVASYNC_EXPORT PendingCounts : public QObject
{
    Q_OBJECT
public:
    ~PendingCounts() override;

    bool isError() const { return error() != HistoryError::None; }
    HistoryError error() const;
    //! One entry a key, in the order of the keys; none until finished() is emitted without an
    //! error.
    QList<HistoryCount> counts() const;

Q_SIGNALS:
    void finished(KorvaSyncIf::PendingCounts *pending);

private:
    friend class HistoryInterface;
    PendingCounts(const HistoryFilter &filter, HistoryCount::By by, QObject *parent);

    std::unique_ptr<PendingCountsPrivate> d;
};

} // namespace KorvaSyncIf
