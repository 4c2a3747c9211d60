#ifndef KELP_FILTER_LOG_H
#define KELP_FILTER_LOG_H

/// Writes one line of the job's log to standard error, which the spooler collects: the level's
/// prefix, the formatted message directly behind it, a newline. Nothing is filtered and nothing is
/// cut. A format that ends in a newline of its own gives an empty line after it.
///
/// @param level 0 or 1 "DEBUG:", 2 "WARN:", 3 "ERROR:", 4 "CRIT:", 5 "INVALID:"; it must be one of
///   these. The filter uses 0 for information, 3 for errors, 4 for a page that cannot be loaded.
[[gnu::format(printf, 2, 3)]] void kelpLogCommon(int level, const char* format, ...);

/// Takes a line of the log: its level and the message alone, without prefix and newline, cut to
/// 1,023 bytes.
using KelpLogSink = void (*)(int level, const char* message);

/// Sends the lines that follow to a sink, for programs that keep a log of their own; null sends
/// them to standard error again, as they are at the start. Not to be called while others log.
void kelpSetLogSink(KelpLogSink sink);

#endif
