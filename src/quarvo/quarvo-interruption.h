#pragma once

// Stops by the user: SIGINT, SIGTERM, and SIGHUP, which a terminal sends that is closed.
//
// A stop ends the process with the stop text on standard error and the status 128 plus the signal's number, without
// flushing anything. It comes at once, whatever the run is doing, unless results are being written: then it is noted,
// and comes when they are written and flushed. So the files end after the last record that was completed, and the
// searches know nothing of signals. All of it costs a store or two for each record.

// Takes the signals over, SIGINT and SIGTERM also where the caller had them ignored, as shells have it for what runs in
// the background. An ignored SIGHUP stays so: nohup asks for that.
void stop_on_signals();

// From here on signals are noted only. A run that has nothing left to search needs no more than this.
void hold_signals();

// While one lives, signals are noted only; a noted one stops the process when it goes. Not to be nested.
class CUninterrupted {
 public:
  CUninterrupted() { hold_signals(); }
  CUninterrupted(const CUninterrupted&) = delete;
  CUninterrupted& operator=(const CUninterrupted&) = delete;
  ~CUninterrupted();
};
