#pragma once

#include <QObject>
#include <QString>

namespace quillbay {

class WorkspaceStorage;

namespace platform {
class ColorSampler;
struct ColorSample;
} // namespace platform

/// "#RRGGBB" in capitals of a picked colour. Each channel is the whole part of 255 times it: 0.999 gives FE.
QString hexOfSample(const platform::ColorSample &sample);

/// Picks colours of the screen and keeps the last ones of the workspace, at most 10, the newest new one
/// first. What is picked is copied, also when the popover has closed meanwhile.
///
/// Thread: main thread.
class ColorPicker : public QObject
{
    Q_OBJECT
    /// What was picked or chosen last since `begin`; empty before.
    Q_PROPERTY(QString hexColor READ hexColor NOTIFY hexColorChanged)
    /// Empty where there is nothing to say.
    Q_PROPERTY(QString copyMessage READ copyMessage NOTIFY copyMessageChanged)

public:
    /// Both references must outlive this object.
    ColorPicker(platform::ColorSampler &sampler, WorkspaceStorage &storage, QObject *parent = nullptr);

    QString hexColor() const { return m_hexColor; }
    QString copyMessage() const { return m_copyMessage; }

    /// The popover opens: nothing is picked yet.
    Q_INVOKABLE void begin();
    /// Asks for a pixel. Nothing while one is being asked for.
    Q_INVOKABLE void pick();
    /// A listed colour, which is copied and keeps its place.
    Q_INVOKABLE void choose(const QString &hex);
    /// Empties the list.
    Q_INVOKABLE void clear();

    static constexpr int messageTime = 1500; ///< Milliseconds from each copy; a later one extends nothing.

Q_SIGNALS:
    void hexColorChanged();
    void copyMessageChanged();

private:
    void picked(const platform::ColorSample &sample);
    void remember(const QString &hex);
    void setHexColor(const QString &hex);
    void setCopyMessage(const QString &message);

    platform::ColorSampler &m_sampler;
    WorkspaceStorage &m_storage;
    QString m_hexColor;
    QString m_copyMessage;
    int m_opening = 0; ///< A message of an earlier one has gone with it.
};

} // namespace quillbay
