"""Asks for the properties of a Cortex-M chip, and makes a firmware project for it."""
import os

from armdevice import CORES, PROBES, Device, DeviceError, write_project
from projecttemplates import file_name, file_problem, give_up
from varnel import app, mbOk
from varneltexts import tr


def createProject(name, template_directory, project_path):
    form = DeviceForm(template_directory)
    device = form.ask()
    if not device:
        return give_up(name, project_path)
    try:
        return write_project(device, file_name(name), project_path)
    except OSError as error:
        return give_up(name, project_path, form.title, file_problem(error))


class DeviceForm:
    """The dialog that asks for the chip."""

    def __init__(self, template_directory):
        self._form = app.loadUI(os.path.join(template_directory, "device.ui"))
        self._form.svdButton.onClicked = self._browse
        self._form.buttonBox.onAccepted = self._accept
        self.title = self._form.windowTitle
        self._device = None

    def ask(self):
        """Returns the device; None if the user cancels."""
        return self._device if self._form.execute() else None

    def _browse(self, _button):
        file = app.openFileDialog(self._form.svdButton.toolTip, self._form.svdEdit.text,
                                  tr("SVD files (*.svd *.xml)"))
        if file:
            self._form.svdEdit.text = file

    def _accept(self, _box):
        form = self._form
        try:
            self._device = Device.of_texts(
                core=CORES[form.coreBox.currentIndex].name, flash_start=form.flashStartEdit.text,
                flash_size=form.flashSizeEdit.text, ram_start=form.ramStartEdit.text, ram_size=form.ramSizeEdit.text,
                svd_file=form.svdEdit.text, probe=PROBES[form.probeBox.currentIndex].name, chip_file=form.chipEdit.text)
        except DeviceError as error:
            app.messageBox(self.title, str(error), mbOk)
            getattr(form, error.field + "Edit").setFocus()
            return
        form.accept()
