#include "library/AppFinder.h"
#include "platform/IconSource.h"
#include "platform/RecentDocuments.h"

namespace quillbay {

namespace {

constexpr double recentSeconds = 3 * 24 * 60 * 60;
constexpr int mostRecentFiles = 30;
constexpr int iconEdge = 64; ///< Device pixels.

QList<FileItem> fileItems(const QList<platform::RecentDocument> &documents, const platform::IconSource &icons)
{
    QList<FileItem> files;
    for (const platform::RecentDocument &document : documents) {
        if (document.path.isEmpty() || document.displayName.isEmpty())
            continue;
        FileItem file;
        file.name = document.displayName;
        file.icon = icons.documentIcon(document.path, iconEdge);
        file.url = QUrl::fromLocalFile(document.path);
        files.append(file);
    }
    return files;
}

} // namespace

void AppFinder::fetchRecentFiles()
{
    ++m_recentFilesQuery;
    m_surroundings.recentDocuments.query(m_surroundings.now() - recentSeconds, mostRecentFiles);
}

void AppFinder::processRecentFiles(const QList<platform::RecentDocument> &documents)
{
    const int query = m_recentFilesQuery;
    m_pool.start([this, query, documents = documents.mid(0, mostRecentFiles)] {
        QList<FileItem> files = fileItems(documents, m_surroundings.icons);
        QMetaObject::invokeMethod(
            this,
            [this, query, files = std::move(files)] {
                if (query != m_recentFilesQuery)
                    return;
                publish(m_recentFiles, QList<FileItem>(files), &AppFinder::recentFilesChanged);
                sendResult();
            },
            Qt::QueuedConnection);
    });
}

} // namespace quillbay
