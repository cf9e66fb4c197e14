# Tests whose expectations are written for POSIX only. A Windows build registers them disabled,
# so ctest lists them as "Not Run (Disabled)" instead of failing; each entry says what the test
# would need to hold on both platforms. Remove an entry once its test covers Windows.

set(QUILLER_POSIX_ONLY_UNIT_TESTS)

set(QUILLER_POSIX_ONLY_SCRIPT_TESTS
  # File sizes count "\n" line ends; gettempdir is compared with the POSIX TMPDIR.
  fn_files
  # Sizes count "\n"; the system's error texts and codes are POSIX's ("No such file or
  # directory (2)"); a folder opened as a file gives "Path/File access error (75)" only where
  # the open's error code is EISDIR.
  fn_files_errors
  # "nul.txt" names the NUL device on Windows; sizes count "\n".
  fn_files_read
  # UCase and word/replace on "ß" need full case mapping (ICU).
  fn_text
  # "/" as a path separator in the script's name.
  startup_paths
  # Programs start through /bin/sh, the opener is xdg-open found on PATH.
  process_shell
  process_web
  process_web_no_opener
  process_shutdown
  # The POSIX warnings of drive and printer connections; Windows answers for real.
  network_posix_unavailable
  # Standard output sent to /dev/full; the error log's name as a symbolic link.
  errors_stdout_full
  errors_log_link)
