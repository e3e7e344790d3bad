pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! Adds several applications to a folder at once. Opens as it is made and, closed, takes back the wish for it; nothing is
    added before "Done". Load it while the view model asks for the picker. */
Sheet {
    id: root

    readonly property AppPicker picker: AppPicker {
        viewModel: ViewModel
    }

    title: qsTr("Add Apps")
    padding: 0
    contentWidth: 550
    contentHeight: 650
    onAccepted: finish()
    onClosed: ViewModel.showingAppPicker = false
    Component.onCompleted: open()

    function finish() {
        root.picker.addSelected();
        close();
    }

    FocusScope {
        anchors.fill: parent
        visible: root.picker.hasFolder
        focus: true

        Item {
            id: header
            width: parent.width
            height: Math.max(titles.height, done.height) + 48

            Column {
                id: titles
                anchors {
                    left: parent.left
                    right: done.left
                    margins: 24
                    verticalCenter: parent.verticalCenter
                }
                spacing: 4

                Text {
                    text: root.title
                    color: Theme.primary
                    font {
                        pixelSize: 24
                        bold: true
                    }
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    width: parent.width
                    text: qsTr("Select apps to add to %1").arg(root.picker.folderName)
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    color: Theme.secondary
                    font.pixelSize: Theme.subheadlineSize
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            ProminentButton {
                id: done
                anchors {
                    right: parent.right
                    rightMargin: 24
                    verticalCenter: parent.verticalCenter
                }
                text: qsTr("Done")
                large: true
                onClicked: root.finish()
            }
        }

        Rectangle {
            id: search
            anchors {
                left: parent.left
                right: parent.right
                leftMargin: 24
                rightMargin: 24
                top: header.bottom
            }
            height: Math.ceil(field.implicitHeight) + 24
            radius: Theme.fieldRadius
            color: Theme.fade(Theme.primary, 0.05)

            Symbol {
                id: glyph
                anchors {
                    left: parent.left
                    leftMargin: 12
                    verticalCenter: parent.verticalCenter
                }
                name: "magnifyingglass"
                color: Theme.secondary
            }
            CustomTextField {
                id: field
                anchors {
                    left: glyph.right
                    right: parent.right
                    leftMargin: 12
                    rightMargin: 12
                    verticalCenter: parent.verticalCenter
                }
                focus: true
                text: root.picker.searchQuery
                placeholder: qsTr("Search apps...")
                font.pixelSize: Theme.bodySize
                onTextEdited: root.picker.searchQuery = text
                Keys.onDownPressed: {
                    if (grid.count > 0)
                        grid.forceActiveFocus(Qt.TabFocusReason);
                }
            }
        }

        Item {
            anchors {
                left: parent.left
                right: parent.right
                top: search.bottom
                topMargin: 16
                bottom: parent.bottom
            }
            clip: true

            // Its own upper corners stay out of sight; the lower ones are the sheet's.
            Rectangle {
                anchors.fill: parent
                anchors.topMargin: -16
                radius: 16
                color: Theme.fade(Theme.primary, 0.02)
            }
            PickerGrid {
                id: grid
                anchors.fill: parent
                picker: root.picker
                onEscapedUp: field.requestFocus()
            }
        }
    }
}
