#include "ui/vocabulary/SpringJob.h"

#include "ui/vocabulary/SpringMotion.h"

#include <algorithm>
#include <cmath>

#include <private/qqmlproperty_p.h>

namespace quillbay {

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
        return true;
    default:
        return false;
    }
}

} // namespace

SpringJob::SpringJob(SpringMotion *owner, const Spring &spring, const Way &way)
    : m_owner(owner)
    , m_spring(spring)
    , m_way(way)
    , m_isNumber(isNumber(way.to))
{
    // Only with a velocity does the time depend on the way, and then the motion begins at once.
    SpringState start = startState();
    if (m_isNumber && way.velocity != 0 && !way.from.isValid())
        start = {way.property.read().toDouble() - way.to.toDouble(), way.velocity};
    // A push without a way to go counts by how far it would throw.
    const double reach =
        std::max(std::abs(start.displacement), std::abs(start.velocity) / m_spring.frequency());
    m_duration = int(std::ceil(1000 * m_spring.settleTime(start, Spring::tolerance * reach)));
}

SpringState SpringJob::startState() const
{
    if (!m_isNumber || !m_way.from.isValid())
        return Spring::unitStep;
    return {m_way.from.toDouble() - m_way.to.toDouble(), m_way.velocity};
}

QVariant SpringJob::valueAt(double seconds) const
{
    const SpringState now = m_spring.after(startState(), seconds);
    if (m_isNumber)
        return m_way.to.toDouble() + now.displacement;
    const auto interpolate = QVariantAnimationPrivate::getInterpolator(m_way.to.typeId());
    if (!interpolate || m_way.from.typeId() != m_way.to.typeId())
        return m_way.to;
    return interpolate(m_way.from.constData(), m_way.to.constData(), 1 + now.displacement);
}

void SpringJob::updateCurrentTime(int milliseconds)
{
    if (!m_way.property.object())
        return;
    const int elapsed = m_way.reversed ? m_duration - milliseconds : milliseconds;
    const QVariant value = elapsed >= m_duration ? m_way.to : valueAt(elapsed / 1000.0);
    // The property's Behavior and binding are what this motion serves: it writes past both.
    QQmlPropertyPrivate::write(m_way.property, value,
                               QQmlPropertyData::BypassInterceptor | QQmlPropertyData::DontRemoveBinding);
}

void SpringJob::updateState(State newState, State oldState)
{
    if (newState == Running && oldState == Stopped && !m_way.from.isValid())
        m_way.from = m_way.property.read();
    const bool cutOff = newState == Stopped && currentLoopTime() < m_duration;
    if (cutOff && m_isNumber && !m_way.reversed && m_owner) {
        const double velocity = m_spring.after(startState(), currentLoopTime() / 1000.0).velocity;
        m_owner->keepVelocity(m_way.property, velocity);
    }
}

} // namespace quillbay
