import QtQuick

QtObject {
    required property string hex
    required property string name
}
