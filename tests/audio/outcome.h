#pragma once

// The outcome code that `call` throws; 0 if it throws none.
template <class Call>
int OutcomeOf(Call call) {
  try {
    call();
  } catch (int code) {
    return code;
  }
  return 0;
}
