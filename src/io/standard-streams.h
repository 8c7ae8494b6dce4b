#pragma once

// For the first lines of main.
//
// A standard stream that the caller closed must not become the number of a file opened later, or results would land in
// it. The stand-in for standard output cannot be written, so that results sent there are an error.
void occupy_standard_streams();

// A closed pipe and a file that may not grow become write errors like others, to be told as such.
void take_signals_of_writing_as_errors();
