#pragma once

#include "foundation/PreferenceStore.h"
#include "support/TestHome.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <gmock/gmock.h>

namespace quillbay::testing {

/// A preference file in a home of the test's own, and what the store printed about it.
class PreferenceFixture : public ::testing::Test
{
protected:
    PreferenceFixture()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &line) { s_lines << line; });
    }
    ~PreferenceFixture() override { qInstallMessageHandler(m_previous); }

    QString path() const { return m_home.path(QStringLiteral(".config/quillbay/preferences.sqlite")); }
    QString folder() const { return m_home.path(QStringLiteral(".config/quillbay")); }

    static QByteArray bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The main files that were set aside.
    QStringList setAside() const
    {
        QStringList names;
        for (const QString &name :
             QDir(folder()).entryList({QStringLiteral("*.damaged-*Z"), QStringLiteral("*.damaged-*Z.?")}))
            names << folder() + QLatin1Char('/') + name;
        return names;
    }
    static const QStringList &lines() { return s_lines; }

    TestHome m_home;

private:
    static inline QStringList s_lines;
    QtMessageHandler m_previous = nullptr;
};

} // namespace quillbay::testing
