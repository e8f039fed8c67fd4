// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include "adaptersignals.h"
#include "scriptedstore.h"

//! An adapter on a scripted store, and what it has told.
struct AdapterFixture
{
    AdapterFixture() { store.calls.clear(); } // those of the adapter's making

    //! It waits for the store, and has told nothing yet.
    bool isWaiting() { return signalsOf.heard.isEmpty() && adapter.inUse(); }

    ScriptedStore store;
    KorvaSyncIf::SyncStorageIf adapter{nullptr};
    AdapterSignals signalsOf{&adapter};
};
