# The directory of the framework's shared log. On Windows it is fixed when the module is built; elsewhere the environment
# variable of the same name goes before it.
if(WIN32)
  set(default_log_directory "C:\\Windows\\Logs\\ZQOrb")
  set(log_separator "\\")
  set(allowed_log_directory "^[A-Za-z]:(\\\\[A-Za-z0-9 .:_-]+)+$")
else()
  set(default_log_directory "/var/log/ZQOrb")
  set(log_separator "/")
  set(allowed_log_directory "^(/[A-Za-z0-9 .:_-]+)+$")
endif()
set(ZQRMT_LOG_DIRECTORY ${default_log_directory} CACHE STRING "Directory of the framework's shared log")

if(NOT ZQRMT_LOG_DIRECTORY MATCHES "${allowed_log_directory}")
  message(FATAL_ERROR
    "ZQRMT_LOG_DIRECTORY is '${ZQRMT_LOG_DIRECTORY}'. The logger accepts only absolute paths made of the letters "
    "A to Z and a to z, digits, blanks and - . : _ between single '${log_separator}'s, with none at the end; with any "
    "other name it would write to ZQRMLOG.LOG in the current directory instead. "
    "Name another directory with -DZQRMT_LOG_DIRECTORY=..., or move the source tree.")
endif()

# For the environment of tests: they log into their build folder, wherever that is, whatever was chosen here.
set(log_of_tests "ZQRMT_LOG_DIRECTORY=${PROJECT_BINARY_DIR}/log")
