#pragma once

// How a program ends when memory runs out: at once, with a message and a status of its own.
//
// An exception is not enough for that. Throwing one takes memory itself, and the shared libraries allocate before main
// is there to catch it; either ends the process by abort(). What has been printed but not flushed is given up, so files
// end where they were flushed last; a file that is still in want of its name is removed.

// Ends the process like that from now on, whichever `new` finds no memory. The text, which is to stay, goes to standard
// error. May run before the libraries have been started: name a function that calls it in the section .preinit_array.
void end_when_memory_runs_out(const char* text, int status);

// For memory that was asked for in another way than by `new`: ends the process as above, or raises std::bad_alloc where
// end_when_memory_runs_out was never called.
[[noreturn]] void raise_out_of_memory();
