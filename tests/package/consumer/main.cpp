// SPDX-FileCopyrightText: 2026 The korvasync developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <korvasync/smssyncinterface.h>
#include <korvasync/vmessageencoder.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>

#include <cstdio>

// Uses one object of each kind that the installed library offers: a facade and a value.
int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("korvasync.*=false"));
    QCoreApplication application(argc, argv);
    const KorvaSyncIf::SMSSyncInterface messages;
    KorvaSyncIf::VMessageEncoder encoder;
    const QString text = encoder.encode(KorvaSyncIf::SmsInfo()).vMessage;
    std::puts(qPrintable(text.section(QStringLiteral("\r\n"), 0, 0)));
}
