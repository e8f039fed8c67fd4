// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bytes as a sender's name, for whose conversation a store is asked, and as the whole text of
// a query: the answer holds what the name stands for and nothing else, and there is one.

#include "fuzzing.h"

#include <commhistory/groupmodel.h>
#include <sparql/qsparqlconnection.h>
#include <sparql/qsparqlresult.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <algorithm>

using namespace CommHistory;

namespace {

const QString Account = QStringLiteral("account");

//! A store with some conversations, made once.
class Conversations
{
public:
    Conversations()
    {
        qputenv("KORVASYNC_STORE", QFile::encodeName(m_directory.path()));
        QList<Group> groups;
        for (const QString &party : parties) {
            Group group;
            group.setLocalUid(Account);
            group.setRemoteUids({party});
            groups.append(group);
        }
        GroupModel model;
        QObject::connect(&model, &GroupModel::groupsCommitted, &m_application,
                         [this](const QList<int> &ids, bool status) {
                             require(status);
                             m_ids = ids;
                             QCoreApplication::quit();
                         });
        model.addGroups(groups);
        QTimer::singleShot(60000, &m_application, &QCoreApplication::quit);
        QCoreApplication::exec();
        require(m_ids.size() == parties.size());
    }

    QString uri(const QString &party) const
    {
        return QStringLiteral("conversation:%1").arg(m_ids.at(parties.indexOf(party)));
    }

    const QStringList parties{QStringLiteral("5550100"),   QStringLiteral("0100"),
                              QStringLiteral("InfoPost"),  QStringLiteral("Info.Post"),
                              QStringLiteral("O'Neill"),   QStringLiteral("C++"),
                              QStringLiteral("aab"),       QString::fromUtf8("B\xc3\xa4nk"),
                              QStringLiteral("back\\sla"), QString(2000, QLatin1Char('0'))};

private:
    int m_argumentCount = 1;
    char m_name[8] = "fuzzing";
    char *m_arguments[2] = {m_name, nullptr};
    const QTemporaryDir m_directory;
    QCoreApplication m_application{m_argumentCount, m_arguments};
    QList<int> m_ids;
};

//! What a query finds, in order.
QStringList ask(const QString &text, bool *isRefused)
{
    QSparqlConnection connection(QStringLiteral("QTRACKER_DIRECT"));
    const QScopedPointer<QSparqlResult> result(connection.exec(QSparqlQuery(text)));
    require(!result.isNull());
    result->waitForFinished();
    *isRefused = result->hasError();
    QStringList found;
    while (result->next())
        found.append(result->value(0));
    found.sort();
    return found;
}

//! Whether the party ends with the name, in which a dot is any character.
bool endsWith(const QString &party, const QString &name)
{
    const auto text = party.toUcs4();
    const auto end = name.toUcs4();
    return end.size() <= text.size()
        && std::equal(end.crbegin(), end.crend(), text.crbegin(),
                      [](uint wanted, uint c) { return wanted == '.' || wanted == c; });
}

//! What must be found for a name without a conversation of its own; false where only another
//! reader of escapes and expressions could tell.
bool isTold(const Conversations &conversations, const QString &name, QStringList *expected)
{
    const auto has = [&](const char *signs) {
        return std::any_of(name.cbegin(), name.cend(),
                           [&](QChar c) { return QLatin1String(signs).contains(c); });
    };
    if (has("\\^$"))
        return false;
    if (has("'\n\r[](){}|*+?") || name.contains(QChar(0)) || name.size() >= 64)
        return true;
    for (const QString &party : conversations.parties) {
        if (party.size() <= 1000 && endsWith(party, name))
            expected->append(conversations.uri(party));
    }
    expected->sort();
    return true;
}

void askForName(const Conversations &conversations, const QString &name)
{
    bool isRefused = false;
    const QStringList found =
        ask(QStringLiteral("SELECT ?comm WHERE{?comm a nmo:CommunicationChannel; nie:subject "
                           "'account'; nie:generator ?remoteId. FILTER REGEX(?remoteId, '")
                + name + QStringLiteral("$')}"),
            &isRefused);
    require(!isRefused);
    QStringList expected;
    if (conversations.parties.contains(name))
        require(found == QStringList{conversations.uri(name)});
    else if (isTold(conversations, name, &expected))
        require(found == expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool silent = (silenceTrace(), true);
    require(silent);
    static const Conversations conversations;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    askForName(conversations, text);
    bool isRefused = false;
    ask(text, &isRefused);
    require(isRefused
            || (text.startsWith(QLatin1String("SELECT ?comm WHERE{?comm a nmo:Communication"))
                && text.endsWith(QLatin1String("$')}"))));
    return 0;
}
