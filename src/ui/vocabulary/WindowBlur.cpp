#include "ui/vocabulary/WindowBlur.h"

#include "platform/WindowEffects.h"
#include "ui/vocabulary/BlurBehind.h"
#include "ui/vocabulary/Theme.h"

#include <QQuickWindow>

namespace quillbay {

WindowBlur *WindowBlur::of(QQuickWindow &window)
{
    auto *blur = window.findChild<WindowBlur *>(QString(), Qt::FindDirectChildrenOnly);
    return blur ? blur : new WindowBlur(window);
}

WindowBlur::WindowBlur(QQuickWindow &window)
    : QObject(&window)
    , m_window(window)
{
    connect(&window, &QQuickWindow::afterAnimating, this, &WindowBlur::refresh);
    connect(&window, &QQuickWindow::colorChanged, this, &WindowBlur::refresh);
}

void WindowBlur::add(BlurBehind *item)
{
    m_items.append(item);
    refresh();
}

void WindowBlur::remove(BlurBehind *item)
{
    m_items.removeOne(item);
    refresh();
}

void WindowBlur::refresh()
{
    const Theme *theme = Theme::instance();
    if (!theme)
        return;
    const bool blurs = theme->effects().canBlurBehind() && m_window.color().alpha() < 255;
    QRegion region;
    for (BlurBehind *item : std::as_const(m_items)) {
        item->setActive(blurs);
        if (blurs && item->isVisible())
            region += item->mapRectToScene(item->boundingRect()).toAlignedRect();
    }
    if (region == m_region)
        return;
    m_region = region;
    theme->effects().setBlurBehind(&m_window, region);
}

} // namespace quillbay
