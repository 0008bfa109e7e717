#pragma once

#include "support/templatefile.h"

#include <random>

/// A template that passes every check and yet has what no sensible one has: equal and empty descriptions, markup
/// and percent signs in them, fields that no block allows, places at the end of what can be counted, several fields
/// on one cell, fields wider than the tape.
QList<FieldRow> strainedTemplate(std::mt19937& random);
