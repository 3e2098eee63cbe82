// The filter's controls in Shotcut: a row for each parameter, of which the control for its kind is
// shown. A parameter stays unset, and so as the filter has it at first, until somebody touches it.
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Dialogs 1.2
import QtQuick.Layouts 1.12
import Shotcut.Controls 1.0 as Shotcut
import 'parameters.js' as Brisel

Item {
    id: root

    property bool isReading: true

    function position() {
        return Math.max(producer.position - (filter.in - producer.in), 0);
    }

    function readAll() {
        isReading = true;
        for (var i = 0; i < rows.count; ++i)
            rows.itemAt(i).read();
        isReading = false;
    }

    width: 350
    height: list.implicitHeight + 16
    Component.onCompleted: readAll()

    ColumnLayout {
        id: list

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 8

        Repeater {
            id: rows

            model: Brisel.parameters

            ColumnLayout {
                id: row

                readonly property var p: modelData

                function read() {
                    var text = filter.get(p.name) || p.initial;
                    if (p.kind === 'number') {
                        var isSet = filter.get(p.name) !== '';
                        var number = isSet ? filter.getDouble(p.name, root.position()) : Number(p.initial);
                        slider.value = Math.round((p.zero + number * p.unit) * 1000) / 1000;
                        keyButton.checked = filter.keyframeCount(p.name) > 0;
                    } else if (p.kind === 'list') {
                        combo.currentIndex = p.values.indexOf(text);
                    } else if (p.kind === 'check') {
                        check.checked = Number(text) >= 0.5;
                    } else if (p.kind === 'color') {
                        color.item.value = text;
                    } else {
                        field.text = text;
                    }
                }

                function write(value) {
                    if (root.isReading)
                        return ;

                    if (p.kind === 'number' && keyButton.checked)
                        filter.set(p.name, value, root.position());
                    else
                        filter.set(p.name, value);
                }

                function number() {
                    return (slider.value - p.zero) / p.unit;
                }

                Layout.fillWidth: true

                Label {
                    visible: row.p.heading !== ''
                    text: row.p.heading
                    font.bold: true
                    topPadding: 8
                }

                RowLayout {
                    Label {
                        text: row.p.name
                        elide: Text.ElideRight
                        horizontalAlignment: Text.AlignRight
                        Layout.preferredWidth: 180

                        Shotcut.HoverTip {
                            text: row.p.tip
                        }
                    }

                    Shotcut.SliderSpinner {
                        id: slider

                        visible: row.p.kind === 'number'
                        minimumValue: visible ? row.p.least : 0
                        maximumValue: visible ? row.p.most : 1
                        decimals: visible ? row.p.decimals : 0
                        suffix: visible ? row.p.suffix : ''
                        onValueChanged: row.p.kind === 'number' && row.write(row.number())
                    }

                    Shotcut.KeyframesButton {
                        id: keyButton

                        visible: row.p.kind === 'number'
                        onToggled: {
                            var value = row.number();
                            if (checked) {
                                filter.clearSimpleAnimation(row.p.name);
                                filter.set(row.p.name, value, root.position());
                            } else {
                                filter.resetProperty(row.p.name);
                                filter.set(row.p.name, value);
                            }
                        }
                    }

                    Shotcut.ComboBox {
                        id: combo

                        visible: row.p.kind === 'list'
                        implicitWidth: 220
                        model: visible ? row.p.shown : []
                        onActivated: row.write(row.p.values[index])
                    }

                    CheckBox {
                        id: check

                        visible: row.p.kind === 'check'
                        onClicked: row.write(checked ? 1 : 0)
                    }

                    Loader {
                        id: color

                        active: row.p.kind === 'color'
                        visible: active
                        sourceComponent: Shotcut.ColorPicker {
                            onValueChanged: row.write(value)
                        }
                    }

                    TextField {
                        id: field

                        visible: row.p.kind === 'text' || row.p.kind === 'file'
                        Layout.fillWidth: true
                        selectByMouse: true
                        onEditingFinished: row.write(text)
                    }

                    Shotcut.Button {
                        visible: row.p.kind === 'file'
                        text: qsTr('Open...')
                        onClicked: {
                            dialog.name = row.p.name;
                            dialog.open();
                        }
                    }

                    Shotcut.UndoButton {
                        onClicked: {
                            filter.resetProperty(row.p.name);
                            root.readAll();
                        }
                    }
                }
            }
        }
    }

    FileDialog {
        id: dialog

        property string name

        modality: application.dialogModality
        nameFilters: ['Scenes (*.toml)', 'All files (*)']
        onAccepted: {
            filter.set(name, decodeURIComponent(String(fileUrl).replace('file://', '')));
            readAll();
        }
    }

    Connections {
        function onChanged() {
            readAll();
        }

        target: filter
    }

    Connections {
        function onPositionChanged() {
            readAll();
        }

        target: producer
    }
}
