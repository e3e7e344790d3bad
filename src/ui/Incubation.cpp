#include "ui/Incubation.h"

namespace quillbay {

void Incubation::incubatingObjectCountChanged(int count)
{
    if (count > 0 && !m_timer.isActive())
        m_timer.start(0, this);
}

void Incubation::timerEvent(QTimerEvent *)
{
    incubateFor(slice);
    if (incubatingObjectCount() == 0)
        m_timer.stop();
}

} // namespace quillbay
