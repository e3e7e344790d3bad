pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! A row of the snippets: what it is, what can be done with it, and opened its code. */
FocusScope {
    id: root

    required property string title
    required property string language
    required property string code
    required property bool isExpanded
    /*! The arrow keys have come to it: its parts can be reached by Tab. */
    property bool isCurrent: false
    property real opened: isExpanded ? 1 : 0

    signal copyRequested
    signal deleteRequested
    signal tapped

    readonly property bool isOpen: opened > 0

    implicitHeight: line.height + 16 + opened * (place.implicitHeight + 6)
    onIsOpenChanged: {
        if (isOpen)
            place.setSource("SnippetCode.qml", {
                code: root.code
            });
        else
            place.source = "";
    }

    Behavior on opened {
        EaseInOut {
            duration: 350 * Theme.motion
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.fade(Theme.primary, 0.03)
        border.color: Theme.fade(Theme.primary, 0.05)
    }
    Item {
        id: line
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: 8
        }
        height: Math.max(texts.height, copyButton.height)

        Item {
            id: tap
            anchors {
                fill: parent
                margins: -4
            }
            focus: true
            activeFocusOnTab: root.isCurrent

            Accessible.role: Accessible.Button
            Accessible.name: root.title
            Accessible.description: root.isExpanded ? qsTr("%1, expanded").arg(root.language) : root.language
            Accessible.focusable: true
            Accessible.onPressAction: root.tapped()
            Keys.onReturnPressed: root.tapped()
            Keys.onEnterPressed: root.tapped()
            Keys.onSpacePressed: root.tapped()

            MouseArea {
                anchors.fill: parent
                onClicked: root.tapped()
            }
            FocusRing {
                anchors.margins: 0
            }
        }
        Column {
            id: texts
            anchors {
                left: parent.left
                right: copyButton.left
                rightMargin: 8
                verticalCenter: parent.verticalCenter
            }
            spacing: 3

            Text {
                width: parent.width
                text: root.title
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.primary
                font {
                    pixelSize: 12
                    bold: true
                }
            }
            Rectangle {
                visible: root.language !== ""
                width: tag.width + 12
                height: tag.height + 2
                radius: 4
                color: Theme.fade(Theme.primary, 0.06)

                Text {
                    id: tag
                    x: 6
                    y: 1
                    width: Math.min(implicitWidth, texts.width - 12)
                    text: root.language
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    color: Theme.secondary
                    font {
                        pixelSize: 9
                        weight: Font.Medium
                    }
                }
            }
        }
        SymbolButton {
            id: copyButton
            anchors {
                right: deleteButton.left
                rightMargin: 4
                verticalCenter: parent.verticalCenter
            }
            symbol: "doc.on.doc.fill"
            label: qsTr("Copy %1").arg(root.title)
            size: 11
            focusPolicy: root.isCurrent ? Qt.TabFocus : Qt.NoFocus
            onClicked: root.copyRequested()
        }
        SymbolButton {
            id: deleteButton
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            symbol: "xmark.circle"
            label: qsTr("Delete %1").arg(root.title)
            size: 11
            focusPolicy: root.isCurrent ? Qt.TabFocus : Qt.NoFocus
            onClicked: root.deleteRequested()
        }
    }
    Item {
        anchors {
            left: line.left
            right: line.right
            top: line.bottom
            topMargin: 6
        }
        height: root.opened * place.implicitHeight
        visible: root.isOpen
        clip: root.opened < 1
        opacity: root.opened

        Loader {
            id: place
            width: parent.width
        }
    }
}
