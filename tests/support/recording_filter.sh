#!/bin/sh
# recording_filter.sh JOB USER TITLE COPIES OPTIONS [FILE]
# Writes down what a print server hands to a filter, and passes the document on. The arguments, each ended by a null
# byte, appear last: where they stand, the record is complete. Where the printer's address begins with /filter/ and a
# number other than 0, the filter fails with that status.
set -eu
umask 022
case $DEVICE_URI in
recorder:/filter/*)
  status=${DEVICE_URI#recorder:/filter/}
  [ "${status%%/*}" -eq 0 ] || exit "${status%%/*}"
  ;;
esac
record="$CV_RECORDS/job-$1"
printf '%s\0' "$@" >"$record.arguments.part"
cat -- "${6:--}" | tee "$record.data.part"
mv "$record.data.part" "$record.data"
mv "$record.arguments.part" "$record.arguments"
