pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The panel of the card that is expanded. */
CategoryModalView {
    isExpanded: ExpandedCard.isExpanded
    apps: ExpandedCard.apps
    title: ExpandedCard.title
    folderId: ExpandedCard.folderId
    onDismissed: ExpandedCard.close()
}
