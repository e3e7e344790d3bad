#pragma once

#include "ui/vocabulary/PrivateAnimation.h"
#include "ui/vocabulary/Spring.h"

#include <QHash>
#include <QQmlProperty>

namespace quillbay {

/// Moves a property to its new value as a `Spring` does, wherever QML takes an animation:
///
///     Behavior on scale { SpringMotion { preset: SpringMotion.CardHover } }
///     displaced: Transition { SpringMotion { properties: "x,y"; response: 0.3; dampingFraction: 0.825 } }
///
/// Numbers keep their velocity when a `Behavior` gives them another target half way, so a tile that the
/// pointer leaves at once turns round instead of stopping dead. Other types that Qt can interpolate (colours,
/// points) go the same way from rest. Under reduced motion it jumps. `duration` and `easing` are without
/// effect.
///
/// It runs on the animation driver of the render loop, for as long as the spring takes to settle and no
/// longer. Made for being many and mostly idle: nothing is computed before the first change.
///
/// Rejected: Qt's SpringAnimation integrates in steps and cannot be given a response and a damping fraction;
/// a NumberAnimation with an easing curve sampled from the spring starts each new way at rest, and needs a
/// curve of its own in each of a thousand tiles. The price is Qt Quick's private animation header: nothing
/// public can stand in a Behavior or a Transition.
///
/// Thread: main thread.
class SpringMotion : public QQuickPropertyAnimation
{
    Q_OBJECT
    /// Seconds. Not negative; 0 jumps.
    Q_PROPERTY(double response READ response WRITE setResponse NOTIFY springChanged)
    /// Above 0.
    Q_PROPERTY(double dampingFraction READ dampingFraction WRITE setDampingFraction NOTIFY springChanged)
    /// Sets both; tells which was set last.
    Q_PROPERTY(Preset preset READ preset WRITE setPreset NOTIFY springChanged)
    QML_ELEMENT

public:
    enum Preset { Standard, Content, Move, DragHighlight, CardHover, SmallSelection };
    Q_ENUM(Preset)

    using QQuickPropertyAnimation::QQuickPropertyAnimation;

    double response() const { return m_response; }
    void setResponse(double response);
    double dampingFraction() const { return m_dampingFraction; }
    void setDampingFraction(double fraction);
    Preset preset() const { return m_preset; }
    void setPreset(Preset preset);

    QAbstractAnimationJob *transition(QQuickStateActions &actions, QQmlProperties &modified,
                                      TransitionDirection direction, QObject *defaultTarget) override;

Q_SIGNALS:
    void springChanged();

private:
    friend class SpringJob;
    /// Keeps the velocity of a motion that was cut off, for a new one that begins in the same turn of the
    /// event loop: whoever stops a motion for good wants no push when the property next moves.
    void keepVelocity(const QQmlProperty &property, double velocity);

    double m_response = 0.4;
    double m_dampingFraction = 0.8;
    Preset m_preset = Standard;
    QHash<QQmlProperty, double> m_velocities;
};

} // namespace quillbay
