#include "uninstaller/AdminPrivileges.h"

#include "foundation/Console.h"
#include "uninstaller/CommandLines.h"

#include <QList>
#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <utility>

namespace quillbay {

namespace {

using platform::ElevatedCommand;
using platform::ElevationResult;
using Outcome = ElevationResult::Outcome;

platform::FileStamp stampOf(const FileIdentity &file)
{
    return {file.device, file.inode, file.kind};
}

QString describe(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        return QStringLiteral("🔑 Elevated command done");
    case Outcome::Refused:
        return QStringLiteral("⚠️ Elevation refused by the user");
    case Outcome::NoAgent:
        return QStringLiteral("⚠️ Elevation not possible, no authentication agent is running");
    case Outcome::NotPermitted:
        return QStringLiteral("⚠️ Elevation denied, no permission");
    case Outcome::Unavailable:
        return QStringLiteral("⚠️ Elevation not available");
    case Outcome::Changed:
        return QStringLiteral("⚠️ Elevated command found another file than the scan");
    case Outcome::CommandFailed:
        return QStringLiteral("⚠️ Elevated command failed");
    case Outcome::Abandoned:
        break;
    }
    return QStringLiteral("⚠️ Elevation abandoned");
}

} // namespace

struct AdminPrivileges::Question
{
    QMutex mutex;
    bool isAnswered = false;
    ElevationResult result;
    QSemaphore answered;

    void answer(const ElevationResult &given)
    {
        const QMutexLocker lock(&mutex);
        if (std::exchange(isAnswered, true))
            return;
        result = given;
        answered.release();
    }
};

struct AdminPrivileges::Questions
{
    QMutex mutex;
    bool isClosed = false;
    QList<std::shared_ptr<Question>> open;
};

AdminPrivileges::AdminPrivileges(platform::Elevation &elevation, QObject *parent)
    : QObject(parent)
    , m_elevation(elevation)
    , m_questions(std::make_shared<Questions>())
{
}

AdminPrivileges::~AdminPrivileges()
{
    close();
}

void AdminPrivileges::close()
{
    const QMutexLocker lock(&m_questions->mutex);
    m_questions->isClosed = true;
    for (const auto &question : std::as_const(m_questions->open))
        question->answer({Outcome::Abandoned, {}});
}

ElevationResult AdminPrivileges::deleteWithAdminPrivileges(const QByteArray &path, const FileIdentity &file)
{
    return run({removeCommandLine(path), stampOf(file)});
}

ElevationResult AdminPrivileges::moveWithAdminPrivileges(const QByteArray &from, const QByteArray &to,
                                                         const FileIdentity &file)
{
    return run({moveCommandLine(from, to), stampOf(file)});
}

ElevationResult AdminPrivileges::run(const ElevatedCommand &command)
{
    const ElevationResult result = ask(command);
    const QString line = describe(result.outcome);
    printLine(result.description.isEmpty() ? line : line + QStringLiteral(": ") + result.description);
    return result;
}

ElevationResult AdminPrivileges::ask(const ElevatedCommand &command)
{
    if (QThread::currentThread() == thread())
        return {Outcome::Unavailable, QStringLiteral("the main thread cannot wait")};
    const auto question = std::make_shared<Question>();
    const auto questions = m_questions;
    {
        const QMutexLocker lock(&questions->mutex);
        if (questions->isClosed)
            return {Outcome::Abandoned, {}};
        questions->open.append(question);
        QMetaObject::invokeMethod(
            this,
            [this, question, command] {
                m_elevation.run(command,
                                [question](const ElevationResult &result) { question->answer(result); });
            },
            Qt::QueuedConnection);
    }
    question->answered.acquire();
    const QMutexLocker lock(&questions->mutex);
    questions->open.removeOne(question);
    return question->result;
}

} // namespace quillbay
