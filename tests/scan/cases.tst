# Golden cases of quarvo-scan: exit status, name, command. ./run tells what a case is.

# --- what it writes
0 results          quarvo-scan -q gattaca.fa
0 bed-by-ending    quarvo-scan -q -j 3 -o out.bed gattaca.fa
0 soft-mask        quarvo-scan -q --mask soft out.fa -t table gattaca.fa
0 one-of-many      quarvo-scan -q -t bed --sequences PRNP_octarepeat gattaca.fa example.fa
0 nothing-to-find  printf '>a\nACGT\n' | quarvo-scan -q -t gff3 -

# --- command line
0 short-help       quarvo-scan -h
1 misspelt-option  quarvo-scan --outptu out.bed gattaca.fa
1 misspelt-word    quarvo-scan --mask soff out.fa gattaca.fa
1 unlike-all-words quarvo-scan --to xml gattaca.fa
0 capital-mask     quarvo-scan -q --mask N out.fa -t bed gattaca.fa
1 no-names         printf '\n' >names; quarvo-scan -o out.bed --sequences-from names gattaca.fa
1 too-many-threads quarvo-scan -j 9999 gattaca.fa
1 index-of-plain   quarvo-scan --index -o out.bed gattaca.fa

# --- what goes wrong
2 missing-input    quarvo-scan -o out.bed gattaca.fa absent.fa
8 not-fasta        printf 'ACGT\n' | quarvo-scan -o out.bed -
8 absent-sequence  quarvo-scan -o out.bed --sequences nobody gattaca.fa
6 existing-output  echo mine >out.bed; quarvo-scan -o out.bed gattaca.fa
6 input-as-output  cp gattaca.fa out.fa; quarvo-scan --force -o out.fa out.fa
6 full-disk        quarvo-scan -q gattaca.fa >/dev/full
