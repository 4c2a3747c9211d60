#ifndef KELP_FILTER_LOG_H
#define KELP_FILTER_LOG_H

/// Writes one line of the job's log to standard error, which the spooler collects: the level's
/// prefix, the formatted message directly behind it, a newline. Nothing is filtered and nothing is
/// cut. A format that ends in a newline of its own gives an empty line after it.
///
/// @param level 0 or 1 "DEBUG:", 2 "WARN:", 3 "ERROR:", 4 "CRIT:", 5 "INVALID:"; it must be one of
///   these. The filter uses 0 for information, 3 for errors, 4 for a page that cannot be loaded.
[[gnu::format(printf, 2, 3)]] void kelpLogCommon(int level, const char* format, ...);

#endif
