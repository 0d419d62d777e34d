#!/bin/sh
# recording_backend.sh JOB USER TITLE COPIES OPTIONS [FILE]
# Stands for a printer: writes down the bytes that reach it, and ends as the number in its address says, for example
# recorder:/exit/0 (printed) or recorder:/exit/4 (the queue stops). /reason/WORD before that: the printer tells this
# reason; /waits: it prints nothing until somebody opens the gate. With status 2 it wants a password, and prints for who
# gives one.
set -eu
umask 022
[ $# -ge 5 ] || exit 0 # asked which devices there are
case $DEVICE_URI in
*/reason/*)
  reason=${DEVICE_URI#*/reason/}
  echo "STATE: +${reason%%/*}" >&2
  ;;
esac
case $DEVICE_URI in
*/waits/*) cat "$CV_RECORDS/gate" ;;
esac
printed="$CV_RECORDS/job-$1.printed"
cat -- "${6:--}" >"$printed.part"
mv "$printed.part" "$printed"
status=${DEVICE_URI##*/}
if [ "$status" -eq 2 ] && [ -n "${AUTH_PASSWORD-}" ]; then
  printf '%s' "$AUTH_USERNAME:$AUTH_PASSWORD" >"$CV_RECORDS/job-$1.credentials"
  status=0
fi
exit "$status"
