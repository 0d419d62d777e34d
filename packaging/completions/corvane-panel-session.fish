# What fish completes after corvane-panel-session.

complete -c corvane-panel-session -l strict -d 'end with status 1 at the first error'
complete -c corvane-panel-session -l bundle -x -a '(__fish_complete_directories)' -d 'use this plug-in bundle'
complete -c corvane-panel-session -l help -d 'show a short help'
complete -c corvane-panel-session -l version -d 'show the version'
