/* What the test module ZQRMTTestsAudio puts into ReturnCode of CoreData, for C and C++.
 *
 * A return code has nine digits: one for the level of the log line that reports the outcome, two for the component
 * that logged it, and six for the id of the outcome. A call that ends without an outcome leaves the code that the
 * contract brought, 0 for none: a record test does so when the contract names no endpoint, and when it passes and the
 * contract brought a code other than 0. While a flag file hides the line of the outcome, the code is that of the last
 * line that the test logged.
 */
#ifndef AUDIOTESTS_ZQRMT_RETURN_CODES_H
#define AUDIOTESTS_ZQRMT_RETURN_CODES_H

/* The first digit of a return code. */
#define ZQRMT_LEVEL_NORMAL 2
#define ZQRMT_LEVEL_WARNING 7

/* The component number of this module's tests: the second and third digit. */
#define ZQRMT_AUDIO_COMPONENT 44

/* The return code of an outcome of this module. */
#define ZQRMT_AUDIO_RETURN_CODE(level, id) ((level)*100000000 + ZQRMT_AUDIO_COMPONENT * 1000000 + (id))

/* The ids of the outcomes: the last six digits. */
enum ZQRMTOutcome {
  ZQRMT_OUTCOME_NO_ENDPOINT = 770117, /* no active endpoint has the id that the contract names */
  ZQRMT_OUTCOME_NO_MEMORY = 990414,   /* there is no memory for what is captured */
  ZQRMT_OUTCOME_PLATFORM = 995582,    /* an operation of the audio system failed */
  ZQRMT_OUTCOME_BAD_INPUT = 995686,   /* the text is no contract, or the playback test finds no endpoint named in it */
  ZQRMT_OUTCOME_TOO_MUCH_SOUND = 995727, /* more was captured than the module holds */
  ZQRMT_OUTCOME_RECORD_PASSED = 995728,
  ZQRMT_OUTCOME_PLAYBACK_PASSED = 995729
};

enum ZQRMTReturnCode {
  ZQRMT_RETURN_NO_ENDPOINT = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_WARNING, ZQRMT_OUTCOME_NO_ENDPOINT),
  ZQRMT_RETURN_NO_MEMORY = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_WARNING, ZQRMT_OUTCOME_NO_MEMORY),
  ZQRMT_RETURN_PLATFORM = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_WARNING, ZQRMT_OUTCOME_PLATFORM),
  ZQRMT_RETURN_BAD_INPUT = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_WARNING, ZQRMT_OUTCOME_BAD_INPUT),
  ZQRMT_RETURN_TOO_MUCH_SOUND = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_WARNING, ZQRMT_OUTCOME_TOO_MUCH_SOUND),
  ZQRMT_RETURN_RECORD_PASSED = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_NORMAL, ZQRMT_OUTCOME_RECORD_PASSED),
  ZQRMT_RETURN_PLAYBACK_PASSED = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_NORMAL, ZQRMT_OUTCOME_PLAYBACK_PASSED)
};

#endif
