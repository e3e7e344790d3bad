#include "library/AppFinder.h"
#include "platform/RecentDocuments.h"

namespace quillbay {

namespace {

constexpr double recentSeconds = 3 * 24 * 60 * 60;
constexpr int mostRecentFiles = 30;

} // namespace

void AppFinder::fetchRecentFiles()
{
    m_surroundings.recentDocuments.query(m_surroundings.now() - recentSeconds, mostRecentFiles);
}

void AppFinder::processRecentFiles(const QList<platform::RecentDocument> &documents)
{
    QList<FileItem> files;
    for (const platform::RecentDocument &document : documents.mid(0, mostRecentFiles)) {
        if (document.path.isEmpty() || document.displayName.isEmpty())
            continue;
        FileItem file;
        file.name = document.displayName;
        file.url = QUrl::fromLocalFile(document.path);
        files.append(file);
    }
    publish(m_recentFiles, std::move(files), &AppFinder::recentFilesChanged);
    sendResult();
}

} // namespace quillbay
