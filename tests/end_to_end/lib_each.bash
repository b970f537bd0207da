# Runs the script that sources it once with each of the arguments, all at once, and exits for it.

runs=() status=0
for argument in "$@"; do
    bash "$0" "$argument" &
    runs+=($!)
done
for run in "${runs[@]}"; do
    wait "$run" || status=$?
done
exit "$status"
