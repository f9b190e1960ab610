/* A module that gives no reply, as the real one does when it is out of memory. */
void* AudioPlaybackTest(const void* contract) {
  (void)contract;
  return 0;
}

void* AudioRecordTest(const void* contract) {
  (void)contract;
  return 0;
}
