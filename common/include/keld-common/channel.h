#ifndef KELD_COMMON_CHANNEL_H
#define KELD_COMMON_CHANNEL_H

/* The channel between a host process and one translator process: two pipes and a child.
 *
 * The host's functions take a channel number. This library serves one channel, KELD_CHANNEL_NUMBER;
 * calls with another number do nothing and answer 0 or null. All of them but ServerEndNow and
 * ServerGetProcess belong to the one thread that runs the conversation.
 *
 * The library changes no signal disposition, installs no handler, and waits for no other child than
 * its own translator. A host may ignore SIGCHLD, or reap the translator itself.
 *
 * A translator that is to end has a grace time of two seconds, and one more second between being
 * asked to terminate and being killed. The environment variable KELD_GRACE_MS, read by ServerOpen,
 * sets both to that many milliseconds; a text that is no number up to 3600000 counts as not set. */

#include <keld-common/export.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { KELD_CHANNEL_NUMBER = 26, KELD_RECEIVE_BUFFER_SIZE = 40960 };

/* State of the channel, as the receive loop sees it. The layout is fixed: users read and write the
 * named fields at these offsets. */
typedef struct ServerControl
{
    char reserved0[28];
    int descriptor; /* offset 28: pipe from the translator; 0 when the channel has none */
    char reserved32[12];
    int ended; /* offset 44: not 0 once the translator has ended */
    char reserved48[4];
    int closed;    /* offset 52: not 0 once the channel is closed */
    char * cursor; /* offset 56: next unread byte in `buffer` */
    int unread;    /* offset 64: number of unread bytes at `cursor` */
    char reserved68[4];
    char * buffer; /* offset 72: receive buffer of KELD_RECEIVE_BUFFER_SIZE bytes */
} ServerControl;

/* Readies the library to serve a host process. Returns 1 when it is. */
KELD_COMMON_EXPORT int ServerSetLumoRunning(void);

/* Starts the translator `command` under the channel's name and opens the pipes to it. A translator
 * that still runs on the channel is shut down first.
 *
 * A command with a slash that is, as a whole, the path of an executable file is that file, blanks
 * and all. Any other is split into words at blanks and tabs, with single and double quotes and the
 * backslash respected and nothing expanded; a first word without a slash is searched for along
 * PATH. No shell is involved, so that a script needs its interpreter line.
 *
 * The directories in `libraryPath`, separated by colons or semicolons, are put in front of
 * LD_LIBRARY_PATH in the translator's environment when the text is neither null nor empty; the
 * caller's environment stays as it is. The child inherits standard input, output and error and its
 * two pipe ends, as descriptors 3 and 4, and nothing else. It starts with default signal actions,
 * none blocked, in a process group of its own.
 *
 * Returns 1 when the process was started, 0 (with errno set and the channel closed) otherwise. */
KELD_COMMON_EXPORT int ServerOpen(int channel, char const * name, char const * command,
                                  char const * libraryPath);

/* Writes `format` to the translator's command pipe. The text is a format without arguments: "%%"
 * goes out as "%", any other conversion as it stands. A translator that is gone makes the call
 * answer 0, and raises no SIGPIPE. Blocks while the pipe is full and the translator lives. Returns
 * the number of bytes written, 0 when not all of them could be. The quit command, exactly "q\n",
 * starts the grace time after which pipe_read reports end of input. */
KELD_COMMON_EXPORT int ServerSendValist(int channel, char const * format);

/* Answers not 0 when ServerOpen could start `command`, read by the same rules. */
KELD_COMMON_EXPORT int ServerQueryExist(char const * command);

/* Marks the channel as one that will not open: closed, until ServerOpen succeeds. */
KELD_COMMON_EXPORT void ServerSetInactive(int channel);

/* The channel's record; the same address for the life of the process. Owned by the library. Looks,
 * without blocking, whether the translator has ended. */
KELD_COMMON_EXPORT ServerControl * ServerGetPtr(int channel);

/* Called once at each end of the receive loop: drops what is unread. */
KELD_COMMON_EXPORT void ServerEndOk(int channel);

/* Closes both pipes, waits for the translator to end, then terminates and at last kills it with all
 * its process group, and reaps it. The wait is the grace time, or what the quit command has left of
 * it. Processes that an ended translator has left in its group are given the same time and end the
 * same way. Returns with no child left. */
KELD_COMMON_EXPORT void ServerShutdownAndClosePipes(int channel);

/* Ends the translator at once, whatever it does: asks it with all its process group to terminate,
 * kills what is left after `milliseconds`, and waits until nothing of it runs. The channel learns
 * of the end as of any other, and is still to be shut down. May be called from any thread. */
KELD_COMMON_EXPORT void ServerEndNow(int channel, int milliseconds);

/* The id of the translator's process, which is that of its process group, too; 0 when there is none
 * of either. May be called from any thread. */
KELD_COMMON_EXPORT int ServerGetProcess(int channel);

enum {
    KELD_ENDING_UNKNOWN = 0,   /* it runs, there was none, or the host has reaped it itself */
    KELD_ENDING_EXITED = 1,    /* with the exit code `number` */
    KELD_ENDING_SIGNALLED = 2, /* by the signal `number` */
    KELD_ENDING_STOPPED = 3    /* it ran on until ServerShutdownAndClosePipes terminated it */
};

/* How a translator ended. */
typedef struct TranslatorEnding
{
    int how; /* KELD_ENDING_... */
    int number;
} TranslatorEnding;

/* How the translator that was started last on the channel has ended. */
KELD_COMMON_EXPORT TranslatorEnding ServerGetEnding(int channel);

/* Keeps a copy of the search path `path` until ServerFreeOldPath. */
KELD_COMMON_EXPORT void ServerSetOldPath(char const * path);
KELD_COMMON_EXPORT void ServerFreeOldPath(void);

/* One blocking read of at most `size` bytes from the translator. Returns the number of bytes; 0 at
 * end of input and for a `size` of 0; a negative number, with errno set, on failure. Input also
 * ends when the translator itself has ended or the grace time after the quit command is over, even
 * if another process keeps the pipe open: what lay in the pipe at that moment is still read. A
 * signal that arrives is handled by the host meanwhile and does not end the read. */
KELD_COMMON_EXPORT int pipe_read(ServerControl * control, char * destination, int size);

/* The translator's end of a channel. */
typedef struct TranslatorEnds
{
    int commands;    /* descriptor to read commands from */
    int frames;      /* descriptor to write frames to */
    int hostProcess; /* process id of the host, which names the options file */
} TranslatorEnds;

/* Finds the pipe ends and the host's id that ServerOpen passed on in the environment variable
 * KELD_TRANSL_CHANNEL ("<commands> <frames> <host>", decimal), marks both descriptors
 * close-on-exec and removes the variable from the environment. Every translator calls this once,
 * before it starts a thread. Returns 1; 0 when the process was not started by ServerOpen. */
KELD_COMMON_EXPORT int TranslatorAttach(TranslatorEnds * ends);

#ifdef __cplusplus
}
#endif

#endif
