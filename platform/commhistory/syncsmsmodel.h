// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <commhistory/eventmodel.h>

#include <QtCore/QDateTime>

namespace CommHistory {

//! Which text messages a SyncSMSModel reads.
struct SyncSMSFilter
{
    //! \param parentId      the folder
    //! \param time          lower bound; null = from the beginning
    //! \param lastModified  false: by the event's own time, bound included;
    //!                      true: by the time of the last modification, bound excluded,
    //!                      where a new event counts as modified when it was added
    SyncSMSFilter(int parentId, const QDateTime &time, bool lastModified)
        : parentId(parentId)
        , time(time)
        , lastModified(lastModified)
    {
    }

    int parentId;
    QDateTime time;
    bool lastModified;
};

//! The text messages of one folder since a time, oldest first, equal times by id.
class KORVAPLATFORM_EXPORT SyncSMSModel : public EventModel
{
    Q_OBJECT
public:
    SyncSMSModel(int parentId, const QDateTime &time, bool lastModified, QObject *parent = nullptr);
    ~SyncSMSModel() override;

    void setSyncSmsFilter(const SyncSMSFilter &filter);

    //! Starts a read with the filter set last. False when the store cannot be
    //! opened or read; no modelReady() follows then. A read that fails after its
    //! start warns once and emits nothing.
    bool getEvents();

Q_SIGNALS:
    //! The rows of the read are in the model.
    void modelReady(bool successful);

private:
    SyncSMSFilter m_filter;
};

} // namespace CommHistory
