# Options for programs built with AddressSanitizer and UBSan. Any report
# ends the program with a failure; leaks are reported except those inside
# Qt's platform plug-ins, fontconfig, glib and dbus (lsan.supp).
corvane_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
export ASAN_OPTIONS="detect_leaks=1:detect_odr_violation=2:detect_stack_use_after_return=1:check_initialization_order=1:abort_on_error=0"
export LSAN_OPTIONS="suppressions=$corvane_root/scripts/lib/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
# The X platform plug-in would load Mesa for GLX and unload it at exit,
# leaving leak reports without a module to suppress them by; no test here
# draws with OpenGL.
export QT_XCB_GL_INTEGRATION=none
