#include "support/TestHome.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <map>
#include <optional>
#include <vector>

namespace quillbay::testing {

struct TestHome::Saved
{
    std::map<QByteArray, std::optional<QByteArray>> values;
};

TestHome::TestHome()
    : m_saved(new Saved)
{
    const auto set = [this](const char *name, const QString &value) {
        m_saved->values[name] = qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
        qputenv(name, QFile::encodeName(value));
    };
    set("HOME", path());
    set("XDG_CONFIG_HOME", path(QStringLiteral(".config")));
    set("XDG_CACHE_HOME", path(QStringLiteral(".cache")));
    set("XDG_DATA_HOME", path(QStringLiteral(".local/share")));
    set("XDG_STATE_HOME", path(QStringLiteral(".local/state")));
    set("XDG_RUNTIME_DIR", path(QStringLiteral("run")));
    set("XDG_DATA_DIRS", path(QStringLiteral("usr/share")));
    QDir().mkpath(path(QStringLiteral("run")));
    QFile::setPermissions(path(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TestHome::~TestHome()
{
    for (const auto &[name, value] : m_saved->values) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
    delete m_saved;
}

QString TestHome::path(const QString &relative) const
{
    return relative.isEmpty() ? m_folder.path() : m_folder.filePath(relative);
}

QString TestHome::write(const QString &relative, const QByteArray &content) const
{
    const QString file = path(relative);
    QDir().mkpath(QFileInfo(file).absolutePath());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file));
    return file;
}

} // namespace quillbay::testing
