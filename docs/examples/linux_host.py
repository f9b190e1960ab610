"""A host: linux_host.py MODULE FUNCTION PLATFORM < contract.json

Runs AudioPlaybackTest or AudioRecordTest of the module on an audio platform, "pulse" or "virtual", and prints the reply.
"""
import ctypes
import sys

file, function, description = sys.argv[1:]
# The system's linker finds it where it is installed in the system's folders; elsewhere LD_LIBRARY_PATH says where it is.
platform = ctypes.CDLL("libaudioplatform.so.2")
platform.AudioPlatformError.restype = ctypes.c_char_p
module = ctypes.CDLL(file)
test = getattr(module, function)
test.restype = ctypes.c_void_p
library = ctypes.CDLL(None)
library.free.argtypes = [ctypes.c_void_p]

# On the thread that will make the call.
if platform.AudioPlatformInitialize(description.encode()) != 0:
    sys.exit(platform.AudioPlatformError().decode())

# UTF-16 in the byte order of this processor, with a zero unit at its end.
encoding = "utf-16-le" if sys.byteorder == "little" else "utf-16-be"
contract = ctypes.create_string_buffer((sys.stdin.read() + "\0").encode(encoding))
reply = test(contract)  # blocks until the test has ended
if reply is None:
    sys.exit("The module gave no reply.")
units = ctypes.cast(reply, ctypes.POINTER(ctypes.c_uint16))
size = 0
while units[size] != 0:
    size += 1
print(ctypes.string_at(reply, 2 * size).decode(encoding))
library.free(reply)  # the module has made it, the host releases it
platform.AudioPlatformUninitialize()
