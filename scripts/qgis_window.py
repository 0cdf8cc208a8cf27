"""Runs inside QGIS, for scripts/qgis-picture: fills the window, and saves a picture of it."""

import os
import traceback
from pathlib import Path

from qgis.core import (QgsClassificationRange, QgsCoordinateReferenceSystem,
                       QgsFillSymbol, QgsGraduatedSymbolRenderer, QgsMarkerSymbol, QgsProject,
                       QgsRectangle, QgsRendererRange, QgsStyle, QgsVectorLayer)
from qgis.PyQt.QtCore import Qt, QTimer
from qgis.PyQt.QtWidgets import QDockWidget, QToolBar
from qgis.utils import iface

AREA = Path(os.environ["VELDTRIM_AREA"])
CRS = "EPSG:32616"
DELIMITERS = {"x;y;z": ";", "x,y,z,g": ",", "x y z": "%20", "x\ty\tz": "%5Ct"}
CLASSES = range(300, 1100, 100)
TOOLBARS = ("mFileToolBar", "mMapNavToolBar", "mAttributesToolBar")


def scan(path):
    """Returns a scan as a delimited-text layer, as the user would open it."""
    with path.open() as file:
        header = file.readline().rstrip("\n")
    x, y, z = header[:5:2]
    uri = (f"{path.as_uri()}?delimiter={DELIMITERS[header.lower()]}&detectTypes=yes"
           f"&xField={x}&yField={y}&zField={z}&crs={CRS}&spatialIndex=no")
    layer = QgsVectorLayer(uri, path.name, "delimitedtext")
    assert layer.isValid(), uri
    return layer, z


def point(colour, size):
    return QgsMarkerSymbol.createSimple(
        {"name": "circle", "color": colour, "size": str(size), "outline_style": "no"})


def by_elevation(field):
    ramp = QgsStyle.defaultStyle().colorRamp("Viridis")
    ranges = []
    for number, lower in enumerate(CLASSES):
        colour = ramp.color(number / (len(CLASSES) - 1)).name()
        limits = QgsClassificationRange(f"{lower} - {lower + 100} m", lower, lower + 100)
        ranges.append(QgsRendererRange(limits, point(colour, 1.35)))
    return QgsGraduatedSymbolRenderer(field, ranges)


def add_scans(folder, style):
    group = QgsProject.instance().layerTreeRoot().addGroup(folder)
    for number, path in enumerate(sorted((AREA / "scans").iterdir())):
        layer, z = scan(AREA / folder / path.name)
        style(layer, z)
        QgsProject.instance().addMapLayer(layer, False)
        group.addLayer(layer).setExpanded(number == 0)


def fill():
    project = QgsProject.instance()
    project.setCrs(QgsCoordinateReferenceSystem(CRS))
    path = os.environ["VELDTRIM_BOUNDARY"]
    boundary = QgsVectorLayer(path, Path(path).name, "ogr")
    assert boundary.isValid(), path
    boundary.setCrs(QgsCoordinateReferenceSystem(CRS))
    boundary.renderer().setSymbol(QgsFillSymbol.createSimple(
        {"color": "198,40,40,20", "outline_color": "#c62828", "outline_width": "0.5"}))
    project.addMapLayer(boundary)
    add_scans("clipped", lambda layer, z: layer.setRenderer(by_elevation(z)))
    add_scans("scans", lambda layer, z: layer.renderer().setSymbol(point("#9aa0a8", 0.6)))


def show():
    iface.layerTreeView().setCurrentLayer(None)
    canvas = iface.mapCanvas()
    canvas.setExtent(QgsRectangle(757900, 4044500, 767700, 4055800))
    canvas.mapCanvasRefreshed.connect(lambda: QTimer.singleShot(1000, save))
    canvas.refresh()


def save():
    saved = iface.mainWindow().grab().save(os.environ["VELDTRIM_PICTURE"])
    os._exit(0 if saved else 1)  # does not ask whether to save the project


def main():
    window = iface.mainWindow()
    window.showNormal()
    window.resize(1240, 900)
    docks = window.findChildren(QDockWidget)
    for dock in docks:
        dock.setVisible(dock.objectName() == "Layers")
    window.resizeDocks([dock for dock in docks if dock.isVisible()], [230], Qt.Horizontal)
    for bar in window.findChildren(QToolBar):
        bar.setVisible(bar.objectName() in TOOLBARS)
    fill()
    QTimer.singleShot(3000, show)  # after the zoom to the first layer, which QGIS does by itself


try:
    main()
except Exception:  # QGIS would show it in a dialog, and stay open
    traceback.print_exc()
    os._exit(1)
