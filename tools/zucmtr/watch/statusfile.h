// The file of --status: how the service and its recorders are doing, for monitoring.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace statusfile {

/// The service's status as node_exporter's textfile collector takes it (Prometheus text format 0.0.4). The
/// object is that of the file in JSON; docs/watch.md lists keys and names.
QByteArray MetricsOf(const QJsonObject& status);

/// Whether the file by this name has the form of MetricsOf: it ends in ".prom".
bool HasMetrics(const QString& path);

/// Puts a new file in the place of the old one, at once: a reader sees one or the other. False on failure,
/// with the reason in `error`.
bool Write(const QString& path, const QJsonObject& status, QString& error);

} // namespace statusfile
