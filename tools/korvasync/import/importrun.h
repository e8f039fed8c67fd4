// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "importoptions.h"
#include "importstore.h"
#include "input/prefetch.h"
#include "process/progress.h"
#include "rejects.h"
#include "store/clientlock.h"

#include <QtCore/QHash>

#include <functional>

//! Adds the new items of files, or only looks whether they are in the store.
//!
//! Adding goes in chunks. A chunk is so many items of the input, whether new or not, or fewer where
//! they are long, so that results come in the order of the input and memory stays bounded. A look
//! holds no items.
class ImportRun
{
public:
    //! \param find  gives the files, as for Prefetch
    ImportRun(const Invocation &invocation, const ImportOptions &options, const ItemJudge &judge,
              std::function<InputPaths()> find);

    ExitCode run();

private:
    bool verifies() const { return m_options.purpose == ImportOptions::Verify; }
    //! Whether what the store has already is told from what is new.
    bool looksUp() const { return m_options.onDuplicate != ImportOptions::AddAgain; }
    bool goesOn() const;

    ExitCode openStore();
    bool readFiles();
    bool readFile(const Prefetch::File &file);
    void noteFileWithoutItems(const ItemReader &reader);
    std::optional<double> partDone();

    void take(const InputItem &input);
    void take(NewItem &&item);
    void keep(const QByteArray &leftovers);
    void lookUp(NewItem &item);
    std::optional<int> idOfEqual(const NewItem &item);
    bool isDuplicate(const Fingerprint &fingerprint, int countInFile);

    void hold(NewItem &&item);
    void writeChunk();
    void writeItems();
    void setOutcome(NewItem &item) const;
    void report(const NewItem &item);
    void showProgress();

    ExitCode tellOfRejects(ExitCode code) const;
    ExitCode finish();

    const Invocation &m_invocation;
    const ImportOptions m_options;
    const ItemJudge &m_judge;
    ImportStore m_store;
    Prefetch m_files;
    Results m_results;
    ClientLock m_clientLock;
    Rejects m_rejects;
    Progress m_progress;

    QString m_path; // of the file in hand
    qint64 m_bytesDone = 0;
    std::optional<qint64> m_bytesTotal; // of all files, once somebody asked; 0 = not known

    std::vector<NewItem> m_items; // the chunk in hand
    QHash<Fingerprint, int> m_newCounts;
    qint64 m_bytesHeld = 0; // of the chunk, about
    int m_nextRef = 0;
    bool m_hasStore = false;
    ExitCode m_storeCode = AllDone;
    bool m_isWholeInput = true;
};
