import QtQuick

// Something to press, by pointer, keyboard and assistive technology alike. The keyboard stays where
// it was when it is clicked.
Item {
    id: root

    property string name
    property string help: name
    readonly property alias hovered: hover.hovered
    readonly property bool pressed: tap.pressed
    property bool wasTapped: false // since the pointer came: its help is not needed any more

    signal clicked

    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: root.name
    Accessible.focusable: true
    Accessible.ignored: !visible
    Accessible.onPressAction: root.clicked()

    Keys.onSpacePressed: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: {
            root.wasTapped = true;
            root.clicked();
        }
    }

    HoverHandler {
        id: hover

        onHoveredChanged: root.wasTapped = false
    }

    HelpTag {
        text: root.help
        shown: hover.hovered && !tap.pressed && !root.wasTapped
    }

    FocusRing {
        target: root
    }
}
