pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Vocabulary

/*! A timing that starts gently. */
NumberAnimation {
    easing {
        type: Easing.BezierSpline
        bezierCurve: Theme.easeIn
    }
}
