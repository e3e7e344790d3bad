pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Holds a view that comes and goes by opacity alone. The view exists only from its coming to the end of its going. */
Loader {
    id: root

    property bool present: false
    property real shown: present ? 1 : 0

    active: present || shown > 0
    enabled: present
    opacity: shown

    Behavior on shown {
        NumberAnimation {
            duration: 200 * Theme.motion
        }
    }
}
