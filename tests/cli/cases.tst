# The golden command-line cases, a line each: exit status, name, command.
#
# The command runs in bash (pipefail on) in a directory that holds a copy of input/. Write the results file to
# `results`, and let at most one masked file arise. The name is lower case, digits and '-'. The expected files are
# expected/NAME.out, .err, .results and .masked, which `run --update` writes; ../golden.sh says how they are read.

# --- command line: files
255 no-input-file          quarvo
255 no-input-file-options  quarvo -M exact -U 20
254 mode-checked-after-the-file-name  quarvo --outputFormat 7 nosuch.fa
155 input-missing          quarvo nosuch.fa
231 input-is-a-directory   mkdir d.fa && quarvo d.fa
155 three-file-names       quarvo -M exact units.fa results third
155 input-name-percent     quarvo '100%% %s%d of %5.2f %z 50%.fa'
0   report-name-percent    cp comments.fa 'a%%b%d.fa' && quarvo -M exact 'a%%b%d.fa'
154 output-dir-missing     quarvo -M exact units.fa nosuchdir/results
154 output-name-percent    quarvo -M exact units.fa 'nosuchdir/%s%%'
154 output-is-input        quarvo -M exact units.fa units.fa; s=$?; cat units.fa; exit $s
154 output-is-linked-input ln units.fa results && quarvo -M exact units.fa results
154 output-is-input-by-other-name  quarvo -M exact units.fa ./units.fa; s=$?; cat units.fa; exit $s
153 masked-not-opened      mkdir units.fa.masked && quarvo -M exact --maskX units.fa results
153 masked-is-input        ln units.fa units.fa.masked && quarvo -M exact --maskX units.fa results
153 masked-is-old-output    echo precious >units.fa.masked; quarvo -M exact --maskX units.fa units.fa.masked
153 masked-is-output       quarvo -M exact --maskX units.fa units.fa.masked; s=$?; echo *.masked; exit $s
0   output-replaced        seq 9999 >results && quarvo -M exact units.fa results
0   output-is-a-device     quarvo -M exact units.fa /dev/null
152 output-disk-full       quarvo -M exact units.fa /dev/full
154 stdout-is-input        quarvo -M exact units.fa >>units.fa; s=$?; cat units.fa; exit $s
154 stderr-is-input        quarvo -M exact units.fa 2>>units.fa; s=$?; cat units.fa; exit $s
0   name-after-dashes      cp units.fa ./-units.fa && quarvo -M exact -- -units.fa results

# --- command line: what the parser itself refuses
1   unknown-long-option    quarvo --noSuchOption units.fa
1   unknown-short-option   quarvo -x units.fa
1   dash-alone             quarvo -
1   unknown-option-behind-the-files  quarvo units.fa results --noSuchOption
1   not-a-number           quarvo -s six units.fa
1   not-an-integer         quarvo -s 6.5 units.fa
1   value-missing          quarvo units.fa -s
1   option-twice           quarvo -s 6 -s 7 units.fa
1   unknown-search-mode    quarvo -M quick units.fa
0   help                   quarvo --help
152 help-disk-full         quarvo --help >/dev/full
152 version-disk-full      quarvo --version >/dev/full
0   version                quarvo --version

# --- command line: the program's own checks, in their order
254 output-format-5        quarvo --outputFormat 5 units.fa
254 print-mode-3           quarvo --printRepeatSeqMode 3 units.fa
254 n-perfection-mode-3    quarvo --NPerfectionMode 3 units.fa
254 report-unit-3          quarvo --reportUnit 3 units.fa
254 modes-checked-in-order quarvo --reportUnit 4 --NPerfectionMode 5 --printRepeatSeqMode 6 units.fa
254 modes-before-thresholds  quarvo --reportUnit 9 -s 0 -m 0 units.fa
255 thresholds-too-low     quarvo -s 1 -l 1 units.fa
0   threshold-by-length    quarvo -M exact -s 1 -l 2 --outputFormat 0 --printRepeatSeqMode 0 units.fa
0   threshold-by-slope     quarvo -M exact -s 0 --minScore_a 1 --minScore_b 1 --outputFormat 0 --printRepeatSeqMode 0 units.fa
255 threshold-slope-too-low  quarvo -s 0 --minScore_a 1 --minScore_b 0.99 --minLength_b 1.5 units.fa
255 mismatch-score-1       quarvo -m -1 units.fa
0   mismatch-score-2       quarvo -M exact -m -2 units.fa
255 indel-score-1          quarvo -g -1 units.fa
0   indel-score-2          quarvo -M exact -g -2 units.fa
255 mismatch-before-indel  quarvo -m 5 -g 5 -r 0 units.fa
255 recursion-0            quarvo -r 0 units.fa
255 unit-lengths-crossed   quarvo -u 5 -U 4 units.fa
0   unit-lengths-equal     quarvo -M exact -u 4 -U 4 units.fa
255 recursion-before-unit-lengths  quarvo -r 0 -u 5 -U 4 units.fa
255 unit-length-too-long   quarvo -U 10001 units.fa
0   unit-length-longest    quarvo -M exact -U 10000 units.fa results
0   unit-length-0          quarvo -M exact -u 0 units.fa results
0   negative-flanking      quarvo -M exact -f -3 units.fa results
0   negative-ns            quarvo -M exact -N -1 Ns.fa results

# --- whole runs: formats
0   format-0               quarvo -M exact --outputFormat 0 units.fa results
0   format-1               quarvo -M exact units.fa results
0   format-1-ns-as-missense  quarvo -M exact --NsAsMissense Ns.fa results
0   format-2               quarvo -M exact --outputFormat 2 units.fa results
0   format-2-long-units    quarvo -M exact -U 60 --outputFormat 2 long-units.fa results
0   format-2-comments      quarvo -M exact --outputFormat 2 --sequenceInfoAsComment headers.fa results
0   format-3               quarvo -M exact --outputFormat 3 units.fa results
0   format-3-flanking      quarvo -M exact --outputFormat 3 -f 5 --sequenceInfoAsComment units.fa results
0   format-3-ns-as-missense  quarvo -M exact --outputFormat 3 --NsAsMissense Ns.fa results
0   format-4               quarvo -M exact --outputFormat 4 units.fa results
0   format-4-flanking      quarvo -M exact --outputFormat 4 -f 4 letters.fa results
0   print-mode-0           quarvo -M exact --printRepeatSeqMode 0 units.fa results
0   print-mode-1           quarvo -M exact --printRepeatSeqMode 1 units.fa results
0   print-mode-1-flanking  quarvo -M exact --printRepeatSeqMode 1 -f 3 comments.fa results
0   print-mode-2-flanking  quarvo -M exact -f 3 letters.fa results
0   report-unit-as-is      quarvo -M exact --reportUnit 0 --outputFormat 0 units.fa results
0   report-unit-alphabetical  quarvo -M exact --reportUnit 1 --outputFormat 0 units.fa results
0   results-to-stdout      quarvo -M exact units.fa
0   results-to-a-pipe      quarvo -M exact units.fa 2>/dev/null | grep -c nucleotide

# --- whole runs: search and thresholds
0   ns-two-in-a-row        quarvo -M exact Ns.fa results
0   ns-three-in-a-row      quarvo -M exact -N 3 Ns.fa results
0   ns-as-neutral          quarvo -M exact --NPerfectionMode 1 --outputFormat 0 Ns.fa results
0   ns-as-match            quarvo -M exact --NPerfectionMode 2 --outputFormat 0 Ns.fa results
0   perfection-bounds      quarvo -M exact --minPerfection 90 --maxPerfection 99.5 Ns.fa results
0   overlap-removed        quarvo -M exact -s 2 --outputFormat 0 overlap.fa results
0   overlap-kept           quarvo -M exact -s 2 -D --outputFormat 0 overlap.fa results
0   unit-length-range      quarvo -M exact -u 3 -U 5 units.fa results
0   extend-exact           quarvo -M extendExact edits.fa results
0   imperfect              quarvo edits.fa results
0   imperfect-settings     quarvo -r 3 -R 30 -m -6 -g -7 --preferShorterRepeats edits.fa results

# --- whole runs: sequence ranges
0   range-3-to-5           quarvo -M exact --firstSeq 3 --lastSeq 5 --outputFormat 0 ten.fa results
0   range-from-9           quarvo -M exact --firstSeq 9 --outputFormat 0 ten.fa results
0   range-empty            quarvo -M exact --firstSeq 5 --lastSeq 3 ten.fa results
0   range-negative         quarvo -M exact --firstSeq -5 ten.fa results
231 range-before-a-bad-symbol  quarvo -M exact --lastSeq 1 bad-symbol.fa results
0   range-last-0           quarvo -M exact --lastSeq 0 --maskX ten.fa results

# --- whole runs: masking
0   masked                 quarvo -M exact --maskX units.fa results
0   masked-lines           quarvo -M exact --maskX lines.fa results
0   masked-range           quarvo -M exact --maskX --firstSeq 2 --lastSeq 3 letters.fa results
0   masked-replaced        echo old >units.fa.masked && quarvo -M exact --maskX units.fa results

# --- whole runs: input files
0   letters                quarvo -M exact letters.fa results
0   crlf                   quarvo -M exact crlf.fa results
0   lone-cr                quarvo -M exact cr.fa results
0   comments               quarvo -M exact comments.fa results
0   unfinished-last-line   quarvo -M exact unfinished.fa results
0   headers-alone          quarvo -M exact headers.fa results
0   lone-header            quarvo -M exact lone-header.fa results
0   long-name              quarvo -M exact long-name.fa results
231 empty-input            quarvo -M exact empty.fa results
231 blank-input            quarvo -M exact blank.fa results
231 bad-symbol             quarvo -M exact bad-symbol.fa results
0   bad-last-byte          quarvo -M exact bad-last-byte.fa results
231 no-header              quarvo -M exact no-header.fa results
231 bad-symbol-masked      quarvo -M exact --maskX bad-symbol.fa results

# --- whole runs: compressed input; units.fa.gz is of gzip, blocks.fa.gz of bgzip
0   gzip                   quarvo -M exact units.fa.gz results
0   gzip-masked            quarvo -M exact --maskX units.fa.gz results
0   gzip-by-any-name       mv units.fa.gz units.fa && quarvo -M exact units.fa results
0   gzip-two-members       cat units.fa.gz blocks.fa.gz >in.fa && quarvo -M exact --outputFormat 0 in.fa results
0   gzip-zeros-behind      truncate -s 8192 units.fa.gz && quarvo -M exact --outputFormat 0 units.fa.gz results
0   block-gzip-masked      quarvo -M exact --maskX blocks.fa.gz results
231 xz                     printf '\xfd7zXZ\0\0\4' >in.fa && quarvo in.fa results
231 gzip-of-an-archive     printf 'PK\3\4' | gzip -n >in.fa && quarvo in.fa results
231 byte-order-mark        printf '\xef\xbb\xbf>a\nACAC\n' >in.fa && quarvo in.fa results
231 utf-16                 printf '\xff\xfe>\0a\0\n\0' >in.fa && quarvo in.fa results
231 fastq                  printf '@a\nACAC\n+\nIIII\n' >in.fa && quarvo in.fa results
231 gzip-empty             gzip -n empty.fa && quarvo -M exact empty.fa.gz results
231 gzip-bad-symbol        gzip -n bad-symbol.fa && quarvo -M exact bad-symbol.fa.gz results
149 gzip-cut-off           truncate -s -1 units.fa.gz && quarvo -M exact units.fa.gz results
149 gzip-cut-off-in-its-head  truncate -s 9 units.fa.gz && quarvo -M exact units.fa.gz results
149 gzip-corrupt           printf X | dd of=units.fa.gz bs=1 seek=100 conv=notrunc status=none && quarvo -M exact units.fa.gz results
149 gzip-wrong-checksum    { head -c -8 units.fa.gz; echo 1234567; } >in.fa && quarvo -M exact in.fa results
149 gzip-other-bytes-behind  echo '>s' >>units.fa.gz && quarvo -M exact --maskX units.fa.gz results
149 gzip-corrupt-and-bad-symbol  gzip -n bad-symbol.fa && truncate -s -4 bad-symbol.fa.gz && quarvo -M exact bad-symbol.fa.gz results
149 block-gzip-without-its-end-block  truncate -s -28 blocks.fa.gz && quarvo -M exact blocks.fa.gz results

# --- whole runs: pipes and devices
0   stdin                  quarvo -M exact /dev/stdin results <units.fa
0   stdin-is-a-pipe        cat units.fa | quarvo -M exact /dev/stdin results
0   gzip-stdin             quarvo -M exact /dev/stdin results <units.fa.gz
0   gzip-pipe-byte-by-byte  dd if=units.fa.gz bs=1 status=none | quarvo -M exact /dev/stdin results
0   gzip-named-pipe        mkfifo in.fa; cat units.fa.gz >in.fa & quarvo -M exact in.fa results
0   gzip-substituted       quarvo -M exact --outputFormat 0 <(cat blocks.fa.gz) results
149 gzip-pipe-cut-off      head -c 100 units.fa.gz | quarvo -M exact /dev/stdin results
153 masked-stdin           quarvo -M exact --maskX /dev/stdin results <units.fa
153 masked-pipe            cat units.fa | quarvo -M exact --maskX /dev/fd/0 results
153 masked-named-pipe      mkfifo in.fa; cat units.fa >in.fa & quarvo -M exact --maskX in.fa results
153 masked-device          quarvo -M exact --maskX /dev/null results
0   masked-link            ln -s units.fa in.fa && quarvo -M exact --maskX in.fa results

# --- the bundled example, as in the quick start and in its README
0   example                quarvo -U 24 --lastSeq 6 examples/example.fa results
0   example-table          quarvo -M exact -s 12 --outputFormat 3 -f 20 examples/example.fa results
