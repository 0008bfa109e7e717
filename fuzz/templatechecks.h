#pragma once

#include "model/bd_t20items.h"

/// Ends the process with "broken: `what`" if something does not hold that must hold for every input.
void require(bool holds, const char* what);

/// An empty store; making the catalogue anew for each input would take most of the time.
const BD_T20Items& emptyStore();

/// The store survives the way to a template file and back.
void checkFileRoundTrip(const BD_T20Items& bd);

/// What the check says fits the store. A valid template is put into blocks and lines, and laid out.
void checkLayoutOfTemplate(BD_T20Items& bd);
