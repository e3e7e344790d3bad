#include "ui/vocabulary/SpringMotion.h"

#include "ui/vocabulary/SpringJob.h"
#include "ui/vocabulary/Theme.h"

#include <QQmlInfo>

namespace quillbay {

namespace {

struct Numbers
{
    double response;
    double dampingFraction;
};

Numbers numbersOf(SpringMotion::Preset preset)
{
    switch (preset) {
    case SpringMotion::Content:
        return {0.5, 0.8};
    case SpringMotion::Move:
        return {0.3, 0.825};
    case SpringMotion::DragHighlight:
        return {0.2, 0.825};
    case SpringMotion::CardHover:
        return {0.3, 0.7};
    case SpringMotion::SmallSelection:
        return {0.25, 0.75};
    case SpringMotion::Standard:
        break;
    }
    return {0.4, 0.8};
}

} // namespace

void SpringMotion::setResponse(double response)
{
    if (response < 0) {
        qmlWarning(this) << "response must not be negative";
        return;
    }
    if (m_response == response)
        return;
    m_response = response;
    Q_EMIT springChanged();
}

void SpringMotion::setDampingFraction(double fraction)
{
    if (fraction <= 0) {
        qmlWarning(this) << "dampingFraction must be above 0";
        return;
    }
    if (m_dampingFraction == fraction)
        return;
    m_dampingFraction = fraction;
    Q_EMIT springChanged();
}

void SpringMotion::setPreset(Preset preset)
{
    const auto [response, dampingFraction] = numbersOf(preset);
    m_preset = preset;
    m_response = response;
    m_dampingFraction = dampingFraction;
    Q_EMIT springChanged();
}

QAbstractAnimationJob *SpringMotion::transition(QQuickStateActions &actions, QQmlProperties &modified,
                                                TransitionDirection direction, QObject *defaultTarget)
{
    const bool jumps = Theme::instance() && Theme::instance()->reducedMotion();
    const Spring spring(jumps ? 0 : m_response, m_dampingFraction);
    auto *group = new QParallelAnimationGroupJob;
    for (const QQuickStateAction &action : createTransitionActions(actions, modified, defaultTarget)) {
        // Without an own `from` the action's may be older than a motion that was just cut off.
        const QVariant begin = from().isValid() ? action.fromValue : QVariant();
        const SpringJob::Way way{action.property, begin, action.toValue, m_velocities.take(action.property),
                                 direction == Backward};
        group->appendAnimation(new SpringJob(this, spring, way));
    }
    return initInstance(group);
}

void SpringMotion::keepVelocity(const QQmlProperty &property, double velocity)
{
    if (m_velocities.isEmpty())
        QMetaObject::invokeMethod(
            this, [this] { m_velocities.clear(); }, Qt::QueuedConnection);
    m_velocities.insert(property, velocity);
}

} // namespace quillbay
