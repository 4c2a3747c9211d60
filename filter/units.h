#pragma once

constexpr double kMillimetresPerInch = 25.4;
