pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A timing that starts fast and ends gently. */
NumberAnimation {
    easing {
        type: Easing.BezierSpline
        bezierCurve: Theme.easeOut
    }
}
