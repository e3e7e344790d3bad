pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

// Nothing for the screen reader: what a symbol means is the name of the control that shows it.
Text {
    id: root

    required property string name
    property real size: Theme.bodySize
    property int weight: Font.Normal

    text: Symbols.text(root.name)
    font: Symbols.font(root.name, root.size, root.weight)
    color: Theme.primary
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
