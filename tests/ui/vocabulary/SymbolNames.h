#pragma once

#include <QStringList>

namespace quillbay::testing {

/// Every symbol name that a screen shows or that a folder or workspace can store, by where it appears.
inline QStringList shownSymbols()
{
    return QStringLiteral(
               // the grid, its toolbar and its menus
               "plus.circle.fill lock.open.fill lock.fill eye.slash eye plus.circle plus chevron.left "
               "eyedropper "
               "ruler qrcode note.text terminal arrow.up.arrow.down checkmark magnifyingglass "
               "xmark.circle.fill "
               "folder.badge.plus pencil trash checkmark.circle.fill "
               // the sidebar
               "square.grid.2x2 clock star pin.fill chevron.up.chevron.down folder briefcase.fill "
               // the lock
               "lock.shield touchid "
               // the uninstaller: categories, files, screens
               "app.fill slider.horizontal.3 folder.fill internaldrive.fill doc.text.fill shippingbox.fill "
               "square.grid.2x2.fill bolt.fill exclamationmark.triangle.fill externaldrive.badge.timemachine "
               "puzzlepiece.extension.fill doc.badge.checkmark archivebox.fill doc.plaintext.fill "
               "lock.doc.fill "
               "doc.fill lock.shield.fill gear trash.fill checkmark.square.fill square "
               // the tools
               "note.text.badge.plus chevron.right chevron.up.circle.fill doc.on.doc.fill xmark.circle "
               "eyedropper.halffull line.3.horizontal ruler.fill stop.fill doc.on.doc "
               // what a folder can be given
               "folder.fill bookmark.fill doc.fill briefcase.fill gamecontroller.fill headphones music.note "
               "video.fill camera.fill paintbrush.fill terminal.fill code.square.fill globe chart.bar.fill "
               "gearshape.fill heart.fill star.fill tag.fill key.fill house.fill "
               // what a workspace can be given
               "laptopcomputer book.fill atom pencil.circle.fill wrenches.fill personalhotspot "
               "creditcard.fill "
               // the pairs of outline and solid forms
               "house heart briefcase calendar calendar.fill wrench wrench.fill key lightbulb lightbulb.fill "
               "paintbrush paintpalette paintpalette.fill pencil.tip crop "
               "chevron.left.forwardslash.chevron.right "
               "cpu cpu.fill network externaldrive externaldrive.fill chart.bar chart.pie chart.pie.fill "
               "play.tv "
               "play.tv.fill doc.richtext doc.richtext.fill sparkles wand.and.stars gearshape gearshape.2 "
               "gearshape.2.fill bolt video film film.fill music.note.fill headphones.fill speaker.wave.2 "
               "speaker.wave.2.fill camera gamecontroller doc.text doc.plaintext newspaper newspaper.fill "
               "envelope "
               "envelope.fill app.badge app.badge.fill cube cube.fill")
        .split(QLatin1Char(' '));
}

} // namespace quillbay::testing
