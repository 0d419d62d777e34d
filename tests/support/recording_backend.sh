#!/bin/sh
# recording_backend.sh JOB USER TITLE COPIES OPTIONS [FILE]
# Stands for a printer: writes down the bytes that reach it, and ends as the number in its address says, for example
# recorder:/exit/0 (printed) or recorder:/exit/4 (the queue stops).
set -eu
umask 022
[ $# -ge 5 ] || exit 0 # asked which devices there are
printed="$CV_RECORDS/job-$1.printed"
cat -- "${6:--}" >"$printed.part"
mv "$printed.part" "$printed"
exit "${DEVICE_URI##*/}"
