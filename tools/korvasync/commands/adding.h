// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "command.h"
#include "messages/messagereader.h"
#include "messages/settling.h"
#include "output/progress.h"
#include "output/rejects.h"
#include "output/results.h"
#include "store/messagewriter.h"

#include <QtCore/QHash>

struct AddingOptions
{
    enum OnDuplicate { Skip, AddAgain, Refuse };

    OnDuplicate onDuplicate = Skip;
    SettlingRules rules;
    int chunkSize = 500;
    QString rejects; //!< file for what is refused; empty = none
};

//! The work of "korvasync add": judges one message after the other and writes them in
//! chunks. A chunk is so many messages of the input, whether new or not, so that results
//! come in the order of the input and memory stays bounded.
class Adding
{
public:
    Adding(const Invocation &invocation, const AddingOptions &options);

    ExitCode run(const QStringList &files);

private:
    struct Item
    {
        ItemResult result;
        int newIndex = -1;  // in newMessages, -1 = not to be added
        QByteArray message; // of a refused one, when rejects are wanted
    };

    ExitCode readStore();
    void addFile(const QString &path);
    void noteFileWithoutMessages(const QString &path, const MessageReader &reader);
    void judge(const MessageReader::Message &message, const QString &path);
    bool isDuplicate(const Fingerprint &fingerprint, int countInFile);
    void refuse(const ItemResult &result, Refusal refusal, const QByteArray &message);
    void append(const Item &item);
    void writeChunk();
    void settleFates();
    bool goesOn() const;
    ExitCode finish();

    const Invocation &invocation;
    const AddingOptions options;
    MessageStore store;
    DuplicateIndex index;
    MessageWriter writer;
    Results results;
    Rejects rejects;
    Progress progress;

    QList<Item> items;             // the chunk in hand
    QList<NewMessage> newMessages; // of the chunk
    QHash<Fingerprint, int> newCounts;
    int nextRef = 0;
    qint64 bytesTotal = 0; // of all files; 0 = not known
    qint64 bytesDone = 0;
    ExitCode trouble = AllDone; // the store's
};
