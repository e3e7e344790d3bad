pragma ComponentBehavior: Bound

import QtQuick

/*! The header or footer of the sidebar's list, as high as what is put into it: a view cannot make one from a component that
    is bound to where it stands. */
Item {
    width: childrenRect.width
    height: childrenRect.height
}
