// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#pragma once

#include <QtCore/QProcess>

//! A program that ends with this object, and with the test program however that ends.
class BoundProcess : public QProcess
{
    Q_OBJECT
public:
    ~BoundProcess() override { end(); }

    void startBound(const QString &program, const QStringList &arguments);
    void end();
};
