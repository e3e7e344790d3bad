pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui
import Quillbay.Vocabulary

/*! What the scan is at, and how far it has come. */
Item {
    id: root

    required property UninstallerFlow flow

    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 32

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 140
            height: 140

            Repeater {
                model: 3
                PulseRing {
                    required property int index
                    anchors.centerIn: parent
                    delay: index * 350
                }
            }
            FloatShadow {
                anchors.fill: icon
                radius: 18
                blur: 20
                offset: 8
                color: Qt.rgba(0, 0, 0, 0.3)
            }
            RoundedIcon {
                id: icon
                anchors.centerIn: parent
                width: 80
                height: 80
                radius: 18
                path: root.flow.appPath
            }
        }
        Column {
            width: parent.width
            spacing: 10

            StageText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: root.flow.scanStageText
            }
            Rectangle {
                x: 40
                width: parent.width - 80
                height: 6
                radius: 4
                color: Theme.fade(Theme.primary, 0.1)

                Accessible.role: Accessible.ProgressBar
                Accessible.name: root.flow.scanStageText
                Accessible.description: qsTr("%1 %").arg(Math.round(100 * root.flow.scanProgress))

                Rectangle {
                    width: parent.width * root.flow.scanProgress
                    height: parent.height
                    radius: Math.min(4, width / 2)
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop {
                            position: 0
                            color: "#5E5CE6"
                        }
                        GradientStop {
                            position: 1
                            color: "#BF5AF2"
                        }
                    }

                    Behavior on width {
                        EaseInOut {
                            duration: 300 * Theme.motion
                        }
                    }
                }
            }
        }
    }
}
