#ifndef KELP_FILTER_STANDARD_STREAMS_H
#define KELP_FILTER_STANDARD_STREAMS_H

/// Makes standard input, output and error safe to use: a descriptor that is closed at the start is
/// filled with one that can be neither read nor written as it should, so that no file opened later
/// takes its place, or, where that is not to be had, the process ends with status 1; a reader that
/// goes away makes writing fail instead of ending the process; and each line of standard error is
/// written at once.
void secureStandardStreams();

/// Flushes standard output at the end of a job.
/// @return the status, or 1, with an error line, where printer data was lost
int finishStandardOutput(int status);

#endif
