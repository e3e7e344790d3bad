#pragma once

#include <QList>
#include <QObject>
#include <QRegion>

class QQuickWindow;

namespace quillbay {

class BlurBehind;

/// What is blurred behind one window: the sum of its `BlurBehind` items. The window owns it.
///
/// Thread: main thread.
class WindowBlur : public QObject
{
    Q_OBJECT

public:
    /// That of `window`, made on the first call.
    static WindowBlur *of(QQuickWindow &window);

    void add(BlurBehind *item);
    void remove(BlurBehind *item);

private:
    explicit WindowBlur(QQuickWindow &window);
    /// Tells the items whether they blur, and the compositor where.
    void refresh();

    QQuickWindow &m_window;
    QList<BlurBehind *> m_items;
    QRegion m_region;
};

} // namespace quillbay
