/* A module that does what the environment variable MISBEHAVIOUR says. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char kReply[] =
    "{\"CoreData\":{\"ReturnCode\":244995729,\"ReturnMessage\":\"Audio Playback Test passed.\"}}";

static void Crash(void) {
  void (*volatile nowhere)(void) = NULL;
  nowhere();
}

static void* Reply(void) {
  unsigned short* reply = malloc(sizeof kReply * sizeof *reply);
  for (size_t i = 0; i < sizeof kReply; ++i) reply[i] = (unsigned char)kReply[i];
  return reply;
}

void* AudioPlaybackTest(const void* contract) {
  const char* behaviour = getenv("MISBEHAVIOUR");
  (void)contract;
  if (behaviour == NULL) return NULL; /* as the real one when it is out of memory */
  if (strcmp(behaviour, "crash") == 0) Crash();
  if (strcmp(behaviour, "crash at the end") == 0) atexit(Crash);
  if (strcmp(behaviour, "exit") == 0) exit(0);
  if (strcmp(behaviour, "chatter") == 0) puts(kReply);
  if (strcmp(behaviour, "nonsense") == 0) return calloc(1, sizeof(short));
  for (volatile int forever = strcmp(behaviour, "hang") == 0; forever;) {
  }
  return Reply();
}

void* AudioRecordTest(const void* contract) {
  return AudioPlaybackTest(contract);
}
