#pragma once

#include <QStringList>

namespace statistics {

/// What keeps the report of a setting from reading its value as it is meant, for whoever types it;
/// "" if nothing does, and for settings that are no texts of a form. It is judged by what the
/// reports read with.
QString settingComplaint(const QStringList& streams, const QString& name, const QString& value);

} // namespace statistics
