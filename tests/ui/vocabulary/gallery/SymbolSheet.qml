import QtQuick
import Quillbay.Vocabulary

Grid {
    id: root

    required property list<string> names

    padding: 12
    spacing: 4
    columns: 8

    Repeater {
        model: root.names

        Column {
            id: cell

            required property string modelData

            width: 150
            spacing: 3

            Row {
                spacing: 8

                Symbol {
                    name: cell.modelData
                    size: 28
                }
                Symbol {
                    name: cell.modelData
                    size: 16
                    weight: Font.Medium
                }
                Symbol {
                    name: cell.modelData
                    size: 12
                    weight: Font.DemiBold
                }
                Symbol {
                    name: cell.modelData
                    size: 28
                    weight: Font.Light
                }
            }
            Text {
                width: cell.width
                text: cell.modelData
                color: Theme.secondary
                font.pixelSize: 9
                elide: Text.ElideRight
            }
        }
    }
}
