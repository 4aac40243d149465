#pragma once

#include <QImage>

/// Hills in mist with spruces: the ground of the main window.
QImage landscape(const QSize& size);

/// Pale ruled paper with a spruce in the corner: the ground of the workbench.
QImage paper(const QSize& size);

/// The outline of a person: stands for a photo that is not there.
QImage noPhoto(const QSize& size);
