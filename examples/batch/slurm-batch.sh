#!/bin/bash
# Renders the files of a list, one path on each line, in an array of Slurm jobs:
#
#   sbatch --array=0-7 slurm-batch.sh LIST TARGET [VARNO OPTIONS...]
#
# Each job of the array renders its share in one process. What has been rendered of the same input with the same
# settings is left out: an array that was interrupted is given again, of the same size. When all jobs have ended,
# cat TARGET/records/*.jsonl has the report of every file. VARNO names another program than varno.
#SBATCH --ntasks=1 --cpus-per-task=1 --output=/dev/null --requeue
set -euo pipefail

list=$1 target=$2
shift 2
number=$SLURM_ARRAY_TASK_ID count=$SLURM_ARRAY_TASK_COUNT

mapfile -t files < <(awk -v number="$number" -v count="$count" 'NR % count == number' "$list")
((${#files[@]} > 0)) || exit 0
mkdir -p "$target/records"
exec "${VARNO:-varno}" render --quiet --skip-existing --record "$target/records/$number.jsonl" --out-dir "$target" "$@" -- "${files[@]}"
