#include "ui/vocabulary/BlurBehind.h"

#include "ui/vocabulary/WindowBlur.h"

namespace quillbay {

BlurBehind::BlurBehind(QQuickItem *parent)
    : QQuickItem(parent)
{
}

BlurBehind::~BlurBehind()
{
    if (m_windowBlur)
        m_windowBlur->remove(this);
}

void BlurBehind::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    Q_EMIT activeChanged();
}

void BlurBehind::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange) {
        if (m_windowBlur)
            m_windowBlur->remove(this);
        m_windowBlur = data.window ? WindowBlur::of(*data.window) : nullptr;
        if (m_windowBlur)
            m_windowBlur->add(this);
        else
            setActive(false);
    }
    QQuickItem::itemChange(change, data);
}

} // namespace quillbay
