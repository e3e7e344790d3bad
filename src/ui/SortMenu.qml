pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The orders of the grid. */
PanelMenu {
    id: root

    title: qsTr("Sort")

    Instantiator {
        model: Library.sortOptions
        delegate: PanelMenuItem {
            id: option
            required property string modelData
            text: modelData
            symbol: modelData === Library.sortOption ? "checkmark" : ""
            Accessible.checkable: true
            Accessible.checked: symbol !== ""
            onTriggered: Library.sortOption = modelData
        }
        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
}
