#include "ui/vocabulary/SymbolTable.h"

#include <QFont>
#include <QLatin1StringView>

#include <algorithm>
#include <iterator>

namespace quillbay::SymbolTable {

namespace {

// In the order of the names' letters, for the search.
// clang-format off
constexpr Symbol symbols[] = {
    {"app.badge", "notification", u'\xe6fa'},
    {"app.badge.fill", "notification", u'\xe6fa'},
    {"app.fill", "app-window", u'\xe5da'},
    {"archivebox.fill", "archive", u'\xe00c'},
    {"arrow.up.arrow.down", "arrows-down-up", u'\xe098'},
    {"atom", "atom", u'\xe5e4'},
    {"bolt", "lightning", u'\xe2de'},
    {"bolt.fill", "lightning", u'\xe2de'},
    {"book.fill", "book-open", u'\xe0e6'},
    {"bookmark.fill", "bookmark-simple", u'\xe0ea'},
    {"briefcase", "briefcase", u'\xe0ee'},
    {"briefcase.fill", "briefcase", u'\xe0ee'},
    {"calendar", "calendar-blank", u'\xe10a'},
    {"calendar.fill", "calendar-blank", u'\xe10a'},
    {"camera", "camera", u'\xe10e'},
    {"camera.fill", "camera", u'\xe10e'},
    {"chart.bar", "chart-bar", u'\xe150'},
    {"chart.bar.fill", "chart-bar", u'\xe150'},
    {"chart.pie", "chart-pie-slice", u'\xe15a'},
    {"chart.pie.fill", "chart-pie-slice", u'\xe15a'},
    {"checkmark", "check", u'\xe182'},
    {"checkmark.circle.fill", "check-circle", u'\xe184'},
    {"checkmark.square.fill", "check-square", u'\xe186'},
    {"chevron.left", "caret-left", u'\xe138'},
    {"chevron.left.forwardslash.chevron.right", "code", u'\xe1bc'},
    {"chevron.right", "caret-right", u'\xe13a'},
    {"chevron.up.chevron.down", "caret-up-down", u'\xe140'},
    {"chevron.up.circle.fill", "caret-circle-up", u'\xe124'},
    {"clock", "clock", u'\xe19a'},
    {"code.square.fill", "code-block", u'\xeafe'},
    {"cpu", "cpu", u'\xe610'},
    {"cpu.fill", "cpu", u'\xe610'},
    {"creditcard.fill", "credit-card", u'\xe1d2'},
    {"crop", "crop", u'\xe1d4'},
    {"cube", "cube", u'\xe1da'},
    {"cube.fill", "cube", u'\xe1da'},
    {"doc.badge.checkmark", "receipt", u'\xe3ec'},
    {"doc.fill", "file", u'\xe230'},
    {"doc.on.doc", "copy", u'\xe1ca'},
    {"doc.on.doc.fill", "copy", u'\xe1ca'},
    {"doc.plaintext", "article", u'\xe0a8'},
    {"doc.plaintext.fill", "article", u'\xe0a8'},
    {"doc.richtext", "file-image", u'\xea24'},
    {"doc.richtext.fill", "file-image", u'\xea24'},
    {"doc.text", "file-text", u'\xe23a'},
    {"doc.text.fill", "file-text", u'\xe23a'},
    {"envelope", "envelope-simple", u'\xe218'},
    {"envelope.fill", "envelope-simple", u'\xe218'},
    {"exclamationmark.triangle.fill", "warning", u'\xe4e0'},
    {"externaldrive", "hard-drives", u'\xe2a0'},
    {"externaldrive.badge.timemachine", "clock-counter-clockwise", u'\xe1a0'},
    {"externaldrive.fill", "hard-drives", u'\xe2a0'},
    {"eye", "eye", u'\xe220'},
    {"eye.slash", "eye-slash", u'\xe224'},
    {"eyedropper", "eyedropper", u'\xe568'},
    {"eyedropper.halffull", "eyedropper-sample", u'\xeac4'},
    {"film", "film-strip", u'\xe792'},
    {"film.fill", "film-strip", u'\xe792'},
    {"folder", "folder", u'\xe24a'},
    {"folder.badge.plus", "folder-plus", u'\xe258'},
    {"folder.fill", "folder", u'\xe24a'},
    {"gamecontroller", "game-controller", u'\xe26e'},
    {"gamecontroller.fill", "game-controller", u'\xe26e'},
    {"gear", "gear", u'\xe270'},
    {"gearshape", "gear-six", u'\xe272'},
    {"gearshape.2", "gear-fine", u'\xe87c'},
    {"gearshape.2.fill", "gear-fine", u'\xe87c'},
    {"gearshape.fill", "gear-six", u'\xe272'},
    {"globe", "globe", u'\xe288'},
    {"headphones", "headphones", u'\xe2a6'},
    {"headphones.fill", "headphones", u'\xe2a6'},
    {"heart", "heart", u'\xe2a8'},
    {"heart.fill", "heart", u'\xe2a8'},
    {"house", "house", u'\xe2c2'},
    {"house.fill", "house", u'\xe2c2'},
    {"internaldrive.fill", "hard-drive", u'\xe29e'},
    {"key", "key", u'\xe2d6'},
    {"key.fill", "key", u'\xe2d6'},
    {"laptopcomputer", "laptop", u'\xe586'},
    {"lightbulb", "lightbulb", u'\xe2dc'},
    {"lightbulb.fill", "lightbulb", u'\xe2dc'},
    {"line.3.horizontal", "list", u'\xe2f0'},
    {"lock.doc.fill", "file-lock", u'\xe95c'},
    {"lock.fill", "lock", u'\xe2fa'},
    {"lock.open.fill", "lock-open", u'\xe306'},
    {"lock.shield", "shield-check", u'\xe40c'},
    {"lock.shield.fill", "shield-check", u'\xe40c'},
    {"magnifyingglass", "magnifying-glass", u'\xe30c'},
    {"minus", "minus", u'\xe32a'},
    {"music.note", "music-note", u'\xe33c'},
    {"music.note.fill", "music-note", u'\xe33c'},
    {"network", "network", u'\xedde'},
    {"newspaper", "newspaper", u'\xe344'},
    {"newspaper.fill", "newspaper", u'\xe344'},
    {"note.text", "note", u'\xe348'},
    {"note.text.badge.plus", "note-pencil", u'\xe34c'},
    {"paintbrush", "paint-brush", u'\xe6f0'},
    {"paintbrush.fill", "paint-brush", u'\xe6f0'},
    {"paintpalette", "palette", u'\xe6c8'},
    {"paintpalette.fill", "palette", u'\xe6c8'},
    {"pencil", "pencil-simple", u'\xe3b4'},
    {"pencil.circle.fill", "pencil-circle", u'\xe3b0'},
    {"pencil.tip", "pen-nib", u'\xe3ac'},
    {"personalhotspot", "broadcast", u'\xe0f2'},
    {"pin.fill", "push-pin", u'\xe3e2'},
    {"play.tv", "monitor-play", u'\xe58c'},
    {"play.tv.fill", "monitor-play", u'\xe58c'},
    {"plus", "plus", u'\xe3d4'},
    {"plus.circle", "plus-circle", u'\xe3d6'},
    {"plus.circle.fill", "plus-circle", u'\xe3d6'},
    {"puzzlepiece.extension.fill", "puzzle-piece", u'\xe596'},
    {"qrcode", "qr-code", u'\xe3e6'},
    {"ruler", "ruler", u'\xe6b8'},
    {"ruler.fill", "ruler", u'\xe6b8'},
    {"shippingbox.fill", "package", u'\xe390'},
    {"slider.horizontal.3", "sliders-horizontal", u'\xe434'},
    {"sparkles", "sparkle", u'\xe6a2'},
    {"speaker.wave.2", "speaker-high", u'\xe44a'},
    {"speaker.wave.2.fill", "speaker-high", u'\xe44a'},
    {"square", "square", u'\xe45e'},
    {"square.grid.2x2", "squares-four", u'\xe464'},
    {"square.grid.2x2.fill", "squares-four", u'\xe464'},
    {"star", "star", u'\xe46a'},
    {"star.fill", "star", u'\xe46a'},
    {"stop.fill", "stop", u'\xe46c'},
    {"tag.fill", "tag", u'\xe478'},
    {"terminal", "terminal-window", u'\xeae8'},
    {"terminal.fill", "terminal-window", u'\xeae8'},
    {"touchid", "fingerprint", u'\xe23e'},
    {"trash", "trash", u'\xe4a6'},
    {"trash.fill", "trash", u'\xe4a6'},
    {"video", "video-camera", u'\xe4da'},
    {"video.fill", "video-camera", u'\xe4da'},
    {"wand.and.stars", "magic-wand", u'\xe6b6'},
    {"wrench", "wrench", u'\xe5d4'},
    {"wrench.fill", "wrench", u'\xe5d4'},
    {"wrenches.fill", "toolbox", u'\xeca0'},
    {"xmark", "x", u'\xe4f6'},
    {"xmark.circle", "x-circle", u'\xe4f8'},
    {"xmark.circle.fill", "x-circle", u'\xe4f8'},
};
// clang-format on

bool precedes(const Symbol &symbol, QStringView name)
{
    return QLatin1StringView(symbol.name) < name;
}

} // namespace

std::optional<Symbol> find(QStringView name)
{
    const auto *found = std::lower_bound(std::begin(symbols), std::end(symbols), name, precedes);
    if (found == std::end(symbols) || QLatin1StringView(found->name) != name)
        return {};
    return *found;
}

bool contains(QStringView name)
{
    return find(name).has_value();
}

SymbolFace face(QStringView name, int weight)
{
    if (name.endsWith(QLatin1StringView(".fill")))
        return SymbolFace::Fill;
    if (weight < QFont::Normal)
        return SymbolFace::Light;
    return weight < QFont::DemiBold ? SymbolFace::Regular : SymbolFace::Bold;
}

QStringList names()
{
    QStringList all;
    for (const Symbol &symbol : symbols)
        all.append(QLatin1StringView(symbol.name));
    return all;
}

} // namespace quillbay::SymbolTable
