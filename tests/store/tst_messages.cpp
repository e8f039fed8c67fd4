// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "storetesting.h"

#include <commhistory/trackerio.h>

using namespace CommHistory;
using namespace StoreTesting;

class TestMessages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void returnsWhatWasAdded();
};

void TestMessages::returnsWhatWasAdded()
{
    Event event = message(QStringLiteral("Hello"));
    event.setIsRead(true);
    event.setMessageToken(QStringLiteral("token"));
    const QList<int> ids = add({event});
    QCOMPARE(ids.size(), 1);
    const QList<Event> found = read(Inbox);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().id(), ids.first());
    QCOMPARE(found.first().freeText(), QStringLiteral("Hello"));
    QCOMPARE(found.first().startTime(), utc(2026, 3, 1, 12));
    Event single;
    QVERIFY(TrackerIO::instance()->getEvent(ids.first(), single));
    QCOMPARE(single.messageToken(), QStringLiteral("token"));
}

STORE_TEST_MAIN(TestMessages)
#include "tst_messages.moc"
