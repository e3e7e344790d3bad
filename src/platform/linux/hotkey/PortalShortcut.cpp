#include "platform/linux/hotkey/PortalShortcut.h"

#include <QKeySequence>

namespace quillbay::platform {

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

QString portalTrigger(QKeyCombination combination)
{
    const Qt::Key key = combination.key();
    const bool isLetter = key >= Qt::Key_A && key <= Qt::Key_Z;
    const bool isDigit = key >= Qt::Key_0 && key <= Qt::Key_9;
    const bool isFunction = key >= Qt::Key_F1 && key <= Qt::Key_F35;
    if (!isLetter && !isDigit && !isFunction)
        return {};
    QString trigger;
    const std::pair<Qt::KeyboardModifier, QLatin1String> names[] = {
        {Qt::ControlModifier, QLatin1String("CTRL+")},
        {Qt::AltModifier, QLatin1String("ALT+")},
        {Qt::ShiftModifier, QLatin1String("SHIFT+")},
        {Qt::MetaModifier, QLatin1String("LOGO+")},
    };
    for (const auto &[modifier, name] : names) {
        if (combination.keyboardModifiers() & modifier)
            trigger += name;
    }
    const QString name = QKeySequence(key).toString(QKeySequence::PortableText);
    return trigger + (isLetter ? name.toLower() : name);
}

} // namespace quillbay::platform
