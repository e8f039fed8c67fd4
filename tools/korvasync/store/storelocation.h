// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <store/storeplace.h>

#include <QtCore/QString>

//! What the commands ask before they open the store: whether there is one at the place that was
//! chosen. What is wrong with one that is there, the store says itself when it is asked.
class StoreLocation
{
public:
    enum State {
        Present,
        Absent,      //!< the first write makes it
        OtherFolder, //!< a folder with other things in it
        Unreachable  //!< errorText() tells why
    };

    //! \param chosen  the --store option; empty = the environment's, else the default place
    explicit StoreLocation(const QString &chosen)
        : m_place(chosen)
    {
    }

    QString path() const { return m_place.path(); }
    State state();
    QString errorText() const { return m_error; }

    //! Makes the folder, closed to others. True when it was not there.
    [[nodiscard]] bool makeFolder() const { return m_place.makeFolder(); }
    //! Makes this place the one that the platform uses. It looks once, at its first use.
    void select() const { m_place.select(); }

private:
    CommHistory::StorePlace m_place;
    QString m_error;
};
