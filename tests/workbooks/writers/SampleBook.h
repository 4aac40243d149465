#pragma once

#include "workbooks/model/Workbook.h"

/// A small workbook with everything that a written file can hold: a report of bordered blocks, a
/// page for print with a picture and a chart, and a hidden sheet of drawings alone.
void fillSampleBook(excel::Workbook& book);

/// A picture file of 2 x 1 pixels.
QByteArray samplePng();
