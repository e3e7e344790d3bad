#include "ui/IconChoices.h"

#include "ui/vocabulary/SymbolTable.h"

namespace quillbay {

namespace {

constexpr const char *folderSymbols[] = {
    "folder.fill",   "bookmark.fill",    "doc.fill",   "briefcase.fill", "gamecontroller.fill",
    "headphones",    "music.note",       "video.fill", "camera.fill",    "paintbrush.fill",
    "terminal.fill", "code.square.fill", "globe",      "chart.bar.fill", "gearshape.fill",
    "heart.fill",    "star.fill",        "tag.fill",   "key.fill",       "house.fill"};

constexpr const char *workspaceSymbols[] = {"briefcase.fill",
                                            "house.fill",
                                            "laptopcomputer",
                                            "gamecontroller.fill",
                                            "book.fill",
                                            "music.note",
                                            "globe",
                                            "atom",
                                            "heart.fill",
                                            "gearshape.fill",
                                            "terminal.fill",
                                            "folder.fill",
                                            "star.fill",
                                            "doc.fill",
                                            "pencil.circle.fill",
                                            "wrenches.fill",
                                            "personalhotspot",
                                            "shippingbox.fill",
                                            "archivebox.fill",
                                            "creditcard.fill"};

struct Forms
{
    const char *outline;
    const char *filled;
};

constexpr Forms pairs[] = {
    {"folder", "folder.fill"},
    {"house", "house.fill"},
    {"heart", "heart.fill"},
    {"star", "star.fill"},
    {"briefcase", "briefcase.fill"},
    {"calendar", "calendar.fill"},
    {"trash", "trash.fill"},
    {"wrench", "wrench.fill"},
    {"key", "key.fill"},
    {"lightbulb", "lightbulb.fill"},
    {"paintbrush", "paintbrush.fill"},
    {"paintpalette", "paintpalette.fill"},
    {"pencil.tip", "pencil.tip"},
    {"crop", "crop"},
    {"slider.horizontal.3", "slider.horizontal.3"},
    {"chevron.left.forwardslash.chevron.right", "chevron.left.forwardslash.chevron.right"},
    {"terminal", "terminal.fill"},
    {"cpu", "cpu.fill"},
    {"network", "network"},
    {"externaldrive", "externaldrive.fill"},
    {"chart.bar", "chart.bar.fill"},
    {"chart.pie", "chart.pie.fill"},
    {"play.tv", "play.tv.fill"},
    {"doc.richtext", "doc.richtext.fill"},
    {"sparkles", "sparkles"},
    {"wand.and.stars", "wand.and.stars"},
    {"gearshape", "gearshape.fill"},
    {"gearshape.2", "gearshape.2.fill"},
    {"bolt", "bolt.fill"},
    {"video", "video.fill"},
    {"film", "film.fill"},
    {"music.note", "music.note.fill"},
    {"headphones", "headphones.fill"},
    {"speaker.wave.2", "speaker.wave.2.fill"},
    {"camera", "camera.fill"},
    {"gamecontroller", "gamecontroller.fill"},
    {"doc.text", "doc.text.fill"},
    {"doc.plaintext", "doc.plaintext.fill"},
    {"newspaper", "newspaper.fill"},
    {"envelope", "envelope.fill"},
    {"app.badge", "app.badge.fill"},
    {"square.grid.2x2", "square.grid.2x2.fill"},
    {"cube", "cube.fill"}};

template <typename Names>
QStringList listOf(const Names &names)
{
    QStringList list;
    for (const char *name : names)
        list.append(QLatin1String(name));
    return list;
}

} // namespace

QStringList IconChoices::folderIcons()
{
    return listOf(folderSymbols);
}

QStringList IconChoices::workspaceIcons()
{
    return listOf(workspaceSymbols);
}

QStringList IconChoices::forms(bool filled)
{
    QStringList forms;
    for (const Forms &pair : pairs) {
        const QString form = QLatin1String(filled ? pair.filled : pair.outline);
        if (SymbolTable::contains(form))
            forms.append(form);
    }
    return forms;
}

QString IconChoices::label(const QString &symbol)
{
    QStringList words = symbol.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    words.removeAll(QStringLiteral("fill"));
    QString label = words.join(QLatin1Char(' '));
    if (!label.isEmpty())
        label[0] = label[0].toUpper();
    return label;
}

} // namespace quillbay
