#pragma once

#include "tests/architecture/sourcetree.h"

/// Includes that their file may not have: what another part keeps to itself, sources, other libraries' headers,
/// and questions for the operating system.
QList<Offence> includeOffences(const SourceTree& tree);

/// Files that do not bear the name of what is in them.
QList<Offence> nameOffences(const SourceTree& tree);
