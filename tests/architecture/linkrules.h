#pragma once

#include "tests/architecture/sourcetree.h"

#include <QSet>

/// The libraries that a target links, those of its libraries included.
QSet<QString> linkedBy(const SourceTree& tree, const QString& target);

/// Sources that no target or another part's target compiles, and targets that link what their parts must not
/// know.
QList<Offence> linkOffences(const SourceTree& tree);
