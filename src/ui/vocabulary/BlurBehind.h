#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace quillbay {

class WindowBlur;

/// Has the compositor blur what lies behind the window where this item is, while it is visible. Several in
/// one window add up.
///
/// The place is looked at after each frame's animations, since no signal tells that an ancestor moved; the
/// compositor hears of it only when it changed, and a window that draws nothing asks nothing.
///
/// Thread: main thread. Needs a theme.
class BlurBehind : public QQuickItem
{
    Q_OBJECT
    /// Whether there is blur to be had: the compositor can, and the window's colour lets what is behind it
    /// through.
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    QML_ELEMENT

public:
    explicit BlurBehind(QQuickItem *parent = nullptr);
    ~BlurBehind() override;

    bool isActive() const { return m_active; }

Q_SIGNALS:
    void activeChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    friend class WindowBlur;
    void setActive(bool active);

    QPointer<WindowBlur> m_windowBlur;
    bool m_active = false;
};

} // namespace quillbay
