// Signals that a long run answers: to end after whole records, and to tell how far it is.
#ifndef FI_RUN_SIGNALS_H_
#define FI_RUN_SIGNALS_H_

namespace fi::app {

// From now on the first SIGINT or SIGTERM is only noted (the second ends the process as ever), and
// so is each SIGUSR1.
void WatchSignals();

// The signal that asks for the end; 0: none.
int EndingSignal();

// True once for each time that the state was asked for.
bool TakeStateRequest();

// Ends the process by `signal`, as if it had never been watched.
void EndBySignal(int signal);

}  // namespace fi::app

#endif  // FI_RUN_SIGNALS_H_
