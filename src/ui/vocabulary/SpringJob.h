#pragma once

#include "ui/vocabulary/PrivateAnimation.h"
#include "ui/vocabulary/Spring.h"

#include <QPointer>
#include <QQmlProperty>
#include <QVariant>

namespace quillbay {

class SpringMotion;

/// One property on its way to a value.
class SpringJob : public QAbstractAnimationJob
{
public:
    struct Way
    {
        QQmlProperty property;
        QVariant from; ///< Invalid: from where the property is when the motion begins.
        QVariant to;
        double velocity = 0;   ///< Per second; for numbers alone.
        bool reversed = false; ///< Whether the job's clock runs backwards.
    };

    SpringJob(SpringMotion *owner, const Spring &spring, const Way &way);

    int duration() const override { return m_duration; }

protected:
    void updateCurrentTime(int milliseconds) override;
    void updateState(State newState, State oldState) override;

private:
    SpringState startState() const;
    QVariant valueAt(double seconds) const;

    QPointer<SpringMotion> m_owner;
    Spring m_spring;
    Way m_way;
    bool m_isNumber;
    int m_duration; ///< Milliseconds until it has settled.
};

} // namespace quillbay
