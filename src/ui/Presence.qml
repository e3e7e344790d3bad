pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! Holds a view that comes and goes by opacity and scale. The view exists only from its coming to the end of its going,
    so nothing in it moves unseen. It is made when the program has a moment: what is gone again by then never exists. */
Loader {
    id: root

    property bool present: false
    property real shown: present && status === Loader.Ready ? 1 : 0

    active: present || shown > 0
    asynchronous: true
    opacity: Math.max(0, Math.min(1, shown))
    scale: 0.95 + 0.05 * shown

    Behavior on shown {
        SpringMotion {
            response: 0.5
            dampingFraction: 0.8
        }
    }
}
