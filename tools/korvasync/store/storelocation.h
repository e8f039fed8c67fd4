// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QString>

//! Where the store is, and whether there is one. Only its marker file is looked at; the
//! database is the platform's own.
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
    explicit StoreLocation(const QString &chosen);

    QString path() const { return folder; }
    State state();
    QString errorText() const { return error; }

    //! Makes this place the one that the platform uses. It looks once, at its first use.
    void select() const;

private:
    QString folder;
    QString error;
};
