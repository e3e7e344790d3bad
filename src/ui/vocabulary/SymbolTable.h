#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace quillbay {

/// The fonts that a glyph can come from: three stroke weights, and solid shapes.
enum class SymbolFace { Regular, Bold, Light, Fill };

/// System symbol names, which is how icons are written and stored, and the glyphs of the Phosphor icon fonts
/// that stand for them. A name ending in ".fill" is the solid form. All four fonts have the same code points,
/// which are those of the `style.css` beside each font in the npm package.
namespace SymbolTable {

struct Symbol
{
    const char *name;
    /// What the icon font calls the glyph.
    const char *glyph;
    char16_t codePoint;
};

/// Empty for a name without a symbol.
std::optional<Symbol> find(QStringView name);
/// Whether there is a symbol image of that name.
bool contains(QStringView name);
/// The font for a symbol at a `QFont::Weight`: solid forms have one weight only, medium counts as regular.
SymbolFace face(QStringView name, int weight);
/// Every name, in the order of their letters.
QStringList names();

} // namespace SymbolTable

} // namespace quillbay
