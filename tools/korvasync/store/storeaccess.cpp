// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storeaccess.h"

#include "process/diagnostics.h"
#include "shared/text.h"

namespace StoreAccess {

ExitCode complain(const StoreLocation &location, Answer answer)
{
    const QString path = location.path();
    switch (answer) {
    case Answer::Finished:
        return AllDone;
    case Answer::Interrupted: // the signal tells by itself
        return SomeNotDone;
    case Answer::TimedOut:
        Diagnostics::error(Text::tr("the store %1 gave no answer in time; see whether "
                                    "another program holds it, or give it more with --timeout")
                               .arg(path));
        return NoAnswer;
    case Answer::Refused:
        break;
    }
    const QString trouble = Diagnostics::storeTrouble();
    Diagnostics::error(!trouble.isEmpty()
                           ? trouble
                           : Text::tr("the store %1 refuses the request; see that its disk "
                                      "has room and that you may write there")
                                 .arg(path));
    return StoreFailed;
}

ExitCode requirePlace(StoreLocation &location)
{
    const StoreLocation::State state = location.state();
    const QString path = location.path();
    if (state == StoreLocation::OtherFolder) {
        Diagnostics::error(Text::tr("%1 is no store, and not empty: name another place "
                                    "with --store")
                               .arg(path));
    } else if (state == StoreLocation::Unreachable) {
        Diagnostics::error(Text::tr("the store %1 cannot be opened: %2; see whose it is, or name "
                                    "another with --store")
                               .arg(path, location.errorText()));
    } else {
        return AllDone;
    }
    return StoreFailed;
}

ExitCode requireStore(StoreLocation &location)
{
    if (location.state() == StoreLocation::Absent) {
        Diagnostics::error(Text::tr("there is no store at %1: --store names another place, "
                                    "and \"korvasync add\" makes one")
                               .arg(location.path()));
        return StoreFailed;
    }
    return requirePlace(location);
}

ExitCode requireReadable(StoreLocation &location, MessageStore &store)
{
    if (const ExitCode code = requireStore(location))
        return code;
    return complain(location, store.probe());
}

} // namespace StoreAccess
