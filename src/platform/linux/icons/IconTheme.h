#pragma once

#include <QByteArray>
#include <QStringList>

#include <compare>
#include <vector>

namespace quillbay::platform {

/// One folder of icons as its theme describes it. Sizes are in pixels, `scale` already multiplied in.
struct IconThemeFolder
{
    enum class Type { Fixed, Scalable, Threshold };

    QByteArray path; ///< Below the theme's folder.
    int size = 0;
    int minSize = 0;
    int maxSize = 0;
    Type type = Type::Threshold;
    bool applications = false; ///< Context is "Applications".
};

/// What an `index.theme` file says, as far as looking up an icon needs it.
struct IconTheme
{
    QStringList inherits;
    std::vector<IconThemeFolder> folders;
};

/// Reads the text of an `index.theme` file, as the Icon Theme specification has it. Folders without a size,
/// and paths that lead out of the theme, are left out; numbers are brought into sane bounds.
IconTheme parseIconTheme(const QByteArray &text);

/// The folders that hold application icons in practice: for a "hicolor" theme that nobody described.
IconTheme usualHicolorTheme();

/// How well a picture serves a wanted size; the smaller the better.
struct IconRank
{
    bool otherContext = false;
    int group = 0;
    int distance = 0;

    friend auto operator<=>(const IconRank &, const IconRank &) = default;
};

/// Ranks a picture from `folder` for a square of `edge` pixels: applications' folders first; in them the
/// exact size, then drawings made for a range that holds the size, other drawings, the next larger picture,
/// and of the smaller ones the largest. A drawing for less than 32 pixels is a simplified symbol and counts
/// as a picture of its size.
IconRank rankIcon(const IconThemeFolder &folder, bool drawing, int edge);

} // namespace quillbay::platform
