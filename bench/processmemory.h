#pragma once

/// The most memory that this process has had so far, in KiB; 0 where the system does not tell.
double peakMemoryKib();
