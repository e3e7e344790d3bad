#include "tools/ColorPicker.h"

#include "foundation/Console.h"
#include "platform/ColorSampler.h"
#include "tools/Clipboard.h"
#include "workspaces/WorkspaceStorage.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace quillbay {

namespace {

constexpr int mostColors = 10;

/// Also of what is no number.
int channel(double component)
{
    return component > 0 ? int(std::min(component, 1.0) * 255) : 0;
}

} // namespace

QString hexOfSample(const platform::ColorSample &sample)
{
    return QString::asprintf("#%02X%02X%02X", unsigned(channel(sample.red)), unsigned(channel(sample.green)),
                             unsigned(channel(sample.blue)));
}

ColorPicker::ColorPicker(platform::ColorSampler &sampler, WorkspaceStorage &storage, QObject *parent)
    : QObject(parent)
    , m_sampler(sampler)
    , m_storage(storage)
{
}

void ColorPicker::begin()
{
    ++m_opening;
    setHexColor({});
    setCopyMessage({});
}

void ColorPicker::pick()
{
    m_sampler.sample([self = QPointer(this)](const platform::ColorSample &sample) {
        if (self)
            self->picked(sample);
    });
}

void ColorPicker::picked(const platform::ColorSample &sample)
{
    switch (sample.outcome) {
    case platform::ColorSample::Outcome::Cancelled:
        return;
    case platform::ColorSample::Outcome::Unavailable:
        printLine(QStringLiteral("Color picker: %1").arg(sample.reason));
        return;
    case platform::ColorSample::Outcome::Picked:
        break;
    }
    const QString hex = hexOfSample(sample);
    choose(hex);
    remember(hex);
}

void ColorPicker::choose(const QString &hex)
{
    copyToClipboard(hex);
    setHexColor(hex);
    setCopyMessage(tr("HEX Copied!"));
    QTimer::singleShot(messageTime, this, [this, opening = m_opening] {
        if (opening == m_opening)
            setCopyMessage({});
    });
}

void ColorPicker::remember(const QString &hex)
{
    QStringList colors = m_storage.recentColors();
    if (colors.contains(hex))
        return;
    colors.prepend(hex);
    m_storage.setRecentColors(colors);
    m_storage.saveRecentColors();
    if (colors.size() <= mostColors)
        return;
    colors.removeLast();
    m_storage.setRecentColors(colors);
    m_storage.saveRecentColors();
}

void ColorPicker::clear()
{
    m_storage.setRecentColors({});
    m_storage.saveRecentColors();
}

void ColorPicker::setHexColor(const QString &hex)
{
    if (hex == m_hexColor)
        return;
    m_hexColor = hex;
    Q_EMIT hexColorChanged();
}

void ColorPicker::setCopyMessage(const QString &message)
{
    if (message == m_copyMessage)
        return;
    m_copyMessage = message;
    Q_EMIT copyMessageChanged();
}

} // namespace quillbay
