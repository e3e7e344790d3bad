#pragma once

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

namespace quillbay {

/// The system symbols that folders and workspaces can be given. Thread: main thread.
class IconChoices : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList folderIcons READ folderIcons CONSTANT)
    Q_PROPERTY(QStringList workspaceIcons READ workspaceIcons CONSTANT)
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    static QStringList folderIcons();
    static QStringList workspaceIcons();
    /// The larger choice for folders, in outline or filled form. Where a symbol has no filled form both have
    /// the outline; a form without a symbol image is left out.
    Q_INVOKABLE static QStringList forms(bool filled);
    /// The symbol's name as a reader would say it: "Doc richtext" for "doc.richtext.fill".
    Q_INVOKABLE static QString label(const QString &symbol);
};

} // namespace quillbay
