pragma ComponentBehavior: Bound

import QtQuick
import Quillbay.Ui

/*! The panel of the card that is expanded. */
CategoryModalView {
    apps: ExpandedCard.apps
    title: ExpandedCard.title
    folderId: ExpandedCard.folderId
    onDismissed: ExpandedCard.close()
}
