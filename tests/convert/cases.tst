# The golden cases of quarvo-convert, a line each: exit status, name, command. See `run`.

# --- each format
0 bed            quarvo three.fa r 2>err && quarvo-convert -t bed r
0 gff3           quarvo three.fa r 2>err && quarvo-convert -t gff3 r
0 json           quarvo -f 3 three.fa r 2>err && quarvo-convert -t json r
0 table          quarvo -f 3 three.fa r 2>err && quarvo-convert -t table r
0 as-fasta       quarvo -f 3 three.fa r 2>err && quarvo-convert -t fasta r
0 as-fasta-place { echo '>a'; printf 'AC%.0s' {1..7}; } >in.fa; quarvo --outputFormat 3 in.fa r 2>err && sed -i '/^a\t/p' r && quarvo-convert -t fasta r
0 primer3        quarvo -f 20 three.fa r 2>err && quarvo-convert -t primer3 r
5 primer3-no-flanks quarvo three.fa r 2>err && quarvo-convert -t primer3 -o converted r
5 primer3-no-symbols quarvo -f 20 --printRepeatSeqMode 0 three.fa r 2>err && quarvo-convert -t primer3 r
0 trgt           quarvo --lastSeq 1 three.fa r 2>err && quarvo-convert -t trgt r
0 hipstr         quarvo three.fa r 2>err && quarvo-convert -t hipstr r
0 expansionhunter quarvo three.fa r 2>err && quarvo-convert -t expansionhunter r
0 catalogue-unit-as-found quarvo --lastSeq 1 --outputFormat 3 --reportUnit 0 three.fa r 2>err && quarvo-convert -t trgt r
5 catalogue-unit-on-either-strand quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t trgt -o converted r
5 catalogue-unit-too-long { echo '>a'; printf 'ACGTTGCATC%.0s' {1..7}; } >in.fa; quarvo in.fa r 2>err && quarvo-convert -t hipstr r
5 catalogue-name quarvo three.fa r 2>err && quarvo-convert -t trgt r
5 catalogue-name-colon { echo '>a:1'; printf 'AC%.0s' {1..7}; } >in.fa; quarvo in.fa r 2>err && quarvo-convert -t expansionhunter r
0 mask-soft      quarvo three.fa r 2>err && quarvo-convert -t mask --fasta three.fa r
0 mask-N         quarvo three.fa r 2>err && quarvo-convert -t mask --mask N --fasta three.fa r
0 mask-X         quarvo three.fa r 2>err && quarvo-convert -t mask --mask X --fasta three.fa r
0 mask-small-n   quarvo three.fa r 2>err && quarvo-convert -t mask --mask n --fasta three.fa r
0 mask-gaps      { echo '# note'; echo '>a'; printf 'GG-a cacac\r\nac*acAC-\rACACgg\n'; } >in.fa; quarvo in.fa r 2>err && quarvo-convert -t mask --fasta in.fa r
0 mask-some      quarvo --firstSeq 3 --outputFormat 3 three.fa r 2>err && quarvo-convert -t mask --fasta three.fa r
0 mask-gzip      quarvo three.fa r 2>err && gzip three.fa && quarvo-convert -t mask --fasta three.fa.gz r | head -n 2
0 mask-empty-name quarvo -M exact names.fa r 2>err && quarvo-convert -t mask --fasta names.fa r
1 mask-no-fasta  quarvo three.fa r 2>err && quarvo-convert -t mask r
2 mask-missing   quarvo three.fa r 2>err && quarvo-convert -t mask --fasta nosuch r
2 mask-cut-gzip  quarvo three.fa r 2>err && gzip three.fa && head -c 100 three.fa.gz >cut.gz && quarvo-convert -t mask --fasta cut.gz -o converted r
5 mask-other-fasta quarvo three.fa r 2>err && quarvo-convert -t mask --fasta names.fa -o converted r
5 mask-cut-fasta quarvo three.fa r 2>err && sed 3d three.fa >cut.fa && quarvo-convert -t mask --fasta cut.fa -o converted r
5 mask-longer-fasta quarvo three.fa r 2>err && echo ACGT >>three.fa && quarvo-convert -t mask --fasta three.fa -o converted r
6 mask-over-fasta quarvo three.fa r 2>err && quarvo-convert -t mask --fasta three.fa -o three.fa r
0 bed-extra      quarvo three.fa r 2>err && quarvo-convert -t bed --extra --header r
0 bed-header     quarvo three.fa r 2>err && quarvo-convert -t bed --header r
0 merge-bed      quarvo three.fa r 2>err && quarvo-convert -t bed --merge --extra r
0 merge-table    quarvo -f 4 three.fa r 2>err && quarvo-convert -t table --merge r | tail -n 1
0 merge-hipstr   quarvo three.fa r 2>err && quarvo-convert -t hipstr --merge r | tail -n 1
5 merge-refused  quarvo three.fa r 2>err && quarvo-convert -t fasta --merge -o converted <(sed 's/^>chr3.*/>chr1/; s/"chr3;a=b%"/"chr1"/' r)
0 tsv            quarvo three.fa r 2>err && quarvo-convert -t tsv r
0 multiqc        quarvo three.fa r 2>err && quarvo-convert -t multiqc r
0 multiqc-sample quarvo three.fa r 2>err && quarvo-convert -t multiqc --sample 'liver 3' r | grep liver
0 bed-score      { echo '>long'; printf 'AC%.0s' {1..700}; } >in.fa; quarvo in.fa r 2>err && quarvo-convert -t bed r

# --- what the results tell
0 json-format-0  quarvo --outputFormat 0 --printRepeatSeqMode 0 three.fa r 2>err && quarvo-convert -t json r
0 json-format-3  quarvo --outputFormat 3 -f 3 --NsAsMissense three.fa r 2>err && quarvo-convert -t json r
0 table-format-0 quarvo --outputFormat 0 --printRepeatSeqMode 0 three.fa r 2>err && quarvo-convert -t table r
0 table-format-3 quarvo --outputFormat 3 --NsAsMissense three.fa r 2>err && quarvo-convert -t table --lengths three.fa.fai r
5 as-fasta-format-0 quarvo --outputFormat 0 --printRepeatSeqMode 0 three.fa r 2>err && quarvo-convert -t fasta -o converted r
0 gff3-format-0  quarvo --outputFormat 0 three.fa r 2>err && quarvo-convert -t gff3 r
0 gff3-format-3  quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t gff3 r
0 tsv-format-3   quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t tsv r
0 no-repeats     quarvo -s 1000 three.fa r 2>err && for f in bed gff3 json table fasta tsv; do quarvo-convert -t $f r; done
0 no-sequences   quarvo --firstSeq 9 three.fa r 2>err && for f in bed gff3 json table fasta tsv multiqc; do quarvo-convert -t $f r; done
0 gzip           quarvo three.fa r 2>err && gzip r && quarvo-convert -t bed r.gz
0 stdin          quarvo three.fa 2>err | quarvo-convert -t bed /dev/stdin
0 dash           quarvo three.fa 2>err | quarvo-convert -t bed --output - -
0 dash-lengths   quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t gff3 --lengths - r <three.fa.fai | head -n 2

# --- lengths
0 lengths-gff3   quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t gff3 --lengths three.fa.fai r
0 lengths-tsv    quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t tsv --lengths three.fa.fai r | grep -v ^unit
0 lengths-range  quarvo --outputFormat 3 --lastSeq 1 three.fa r 2>err && quarvo-convert -t tsv --lengths three.fa.fai r | grep -v ^unit
5 lengths-bad    quarvo three.fa r 2>err && quarvo-convert -t tsv --lengths bad.fai r
5 lengths-short  quarvo --outputFormat 3 three.fa r 2>err && quarvo-convert -t tsv -o converted --lengths short.fai r
5 lengths-contradict quarvo three.fa r 2>err && sed 's/\t[0-9]*/\t99/' three.fa.fai >fai && quarvo-convert -t tsv --lengths fai -o converted r
0 lengths-agree  quarvo three.fa r 2>err && quarvo-convert -t gff3 --lengths three.fa.fai r | grep -c region
2 lengths-missing quarvo three.fa r 2>err && quarvo-convert -t tsv --lengths nosuch.fai r

# --- names
0 names-json     quarvo -M exact names.fa r 2>err && quarvo-convert -t json r | cut -c 1-90
0 names-gff3     quarvo -M exact --lastSeq 3 names.fa r 2>err && quarvo-convert -t gff3 r | cut -c 1-40
0 names-bed      quarvo -M exact --lastSeq 2 names.fa r 2>err && quarvo-convert -t bed r
5 name-hash-bed  quarvo -M exact --firstSeq 3 names.fa r 2>err && quarvo-convert -t bed -o converted r
5 name-empty-gff3 quarvo -M exact --firstSeq 4 names.fa r 2>err && quarvo-convert -t gff3 -o converted r
5 name-track-bed quarvo -M exact --firstSeq 5 names.fa r 2>err && quarvo-convert -t bed -o converted r
5 name-twice-bed quarvo -M exact same.fa r 2>err && quarvo-convert -t bed r
5 name-twice-gff3 quarvo -M exact same.fa r 2>err && quarvo-convert -t gff3 r
5 name-with-escapes  printf '>\033[2Jx\nACACACACACAC\n>\033[2Jx\nACACACACACAC\n' >in.fa; quarvo in.fa r 2>err && quarvo-convert -t bed -o converted r
1 word-with-escapes quarvo-convert -t bed r $'--\033[2Jx'
2 file-with-escapes quarvo-convert -t bed $'\033[2Jx'
0 name-twice-tsv quarvo -M exact same.fa r 2>err && quarvo-convert -t tsv r
0 name-twice-multiqc quarvo -M exact same.fa r 2>err && quarvo-convert -t multiqc r | grep -A 2 same
0 name-twice-json quarvo -M exact same.fa r 2>err && quarvo-convert -t json r | cut -c 1-60

# --- what is no results file, or not whole
3 fasta          quarvo-convert -t bed -o converted three.fa
3 empty          quarvo-convert -t bed -o converted /dev/null
3 format-2       quarvo --outputFormat 2 three.fa r 2>err && quarvo-convert -t bed r
3 format-4       quarvo --outputFormat 4 three.fa r 2>err && quarvo-convert -t bed r
3 messages-mixed-in quarvo three.fa >r 2>&1; quarvo-convert -t bed r
3 two-results    quarvo three.fa r 2>err && cat r r >twice && quarvo-convert -t bed -o converted twice
4 unfinished     quarvo three.fa r 2>err && head -n -1 r >cut && quarvo-convert -t bed -o converted cut
4 unfinished-stdout quarvo three.fa r 2>err && head -n -3 r >cut && quarvo-convert -t bed cut
2 cut-gzip       quarvo three.fa r 2>err && gzip -c r | head -c 300 >cut && quarvo-convert -t json cut
3 xz             printf '\xfd7zXZ\0\0\4' >r.xz && quarvo-convert -t bed r.xz
5 lengths-utf-16 quarvo three.fa r 2>err && iconv -t UTF-16 three.fa.fai >fai && quarvo-convert -t tsv --lengths fai r
2 missing        quarvo-convert -t bed nosuch
2 directory      quarvo-convert -t bed .

# --- files
0 output         quarvo three.fa r 2>err && quarvo-convert -t bed -o converted r
0 output-replaced echo old >converted; quarvo three.fa r 2>err && quarvo-convert -t bed -o converted r
4 output-kept    echo old >converted; quarvo three.fa r 2>err && head -n -1 r >cut && quarvo-convert -t bed -o converted cut
0 output-mode    echo old >converted; chmod 600 converted; quarvo three.fa r 2>err && quarvo-convert -t bed -o converted r && stat -c %a converted
6 stderr-is-input quarvo three.fa r 2>err && quarvo-convert -t bed -o converted r 2>>r; s=$?; tail -n 1 r; exit $s
0 output-linked  ln -s converted link; quarvo three.fa r 2>err && quarvo-convert -t bed -o link r && test -L link
6 output-is-input quarvo three.fa converted 2>err && sum=$(cksum <converted) && quarvo-convert -t bed -o converted converted; s=$?; [ "$sum" = "$(cksum <converted)" ] || exit 99; exit $s
6 output-is-linked-input quarvo three.fa r 2>err && ln r other && quarvo-convert -t bed -o other r; s=$?; tail -n 1 r; exit $s
6 stdout-is-input quarvo three.fa r 2>err && quarvo-convert -t bed r >>r; s=$?; tail -n 1 r; exit $s
6 output-is-lengths quarvo three.fa r 2>err && quarvo-convert -t tsv --lengths three.fa.fai -o three.fa.fai r; s=$?; cat three.fa.fai; exit $s
6 output-dir-missing quarvo three.fa r 2>err && quarvo-convert -t bed -o nosuchdir/x r
6 output-is-a-directory mkdir d; quarvo three.fa r 2>err && quarvo-convert -t bed -o d r
6 disk-full      quarvo three.fa r 2>err && quarvo-convert -t bed -o /dev/full r
6 stdout-full    quarvo three.fa r 2>err && quarvo-convert -t multiqc r >/dev/full
6 stdout-closed  quarvo three.fa r 2>err && quarvo-convert -t bed r >&-
0 output-gz      quarvo three.fa r 2>err && quarvo-convert -t bed -o packed.gz r && zcat packed.gz >converted && tail -c 28 packed.gz | od -An -tx1
6 output-gz-full ln -s /dev/full packed.gz; quarvo three.fa r 2>err && quarvo-convert -t bed -o packed.gz r
6 file-size-limit quarvo three.fa r 2>err && (ulimit -f 0; quarvo-convert -t json -o converted r) 2>&1 | cat >&2
141 closed-pipe  { echo '>a'; printf 'ACGTTTTTTTTTTTTGCA%.0s' {1..20000}; } >in.fa; quarvo -M exact --outputFormat 3 in.fa r 2>err && quarvo-convert -t json r | head -n 1

# --- command line
1 no-format      quarvo-convert r
1 unknown-format quarvo-convert -t xml r
1 misspelt-format quarvo-convert -t bde r
1 no-input       quarvo-convert -t bed
1 two-inputs     quarvo-convert -t bed a b
1 unknown-option quarvo-convert -t bed --nosuch r
1 option-behind-the-file quarvo-convert -t bed r --nosuch
0 help           quarvo-convert --help
0 version        quarvo-convert --version
6 help-disk-full quarvo-convert --help >/dev/full
6 version-disk-full quarvo-convert --version >/dev/full
