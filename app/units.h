#ifndef KELP_APP_UNITS_H
#define KELP_APP_UNITS_H

/// IPP measures media, and speeds a second, in hundredths of a millimetre.
constexpr int kHundredthsPerInch = 2540;

#endif
