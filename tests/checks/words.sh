#!/usr/bin/env bash
# The numbers of translated words from 120 on, captions and core/locale_ids.h together: each stands for one text,
# and they follow each other without gaps.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

git ls-files -co --exclude-standard -- '*.h' '*.cpp' ':!tests' ':!bench' ':!fuzz' ':!samples' | xargs perl -0777 -e '
my (%text, $bad);
for my $file (@ARGV) {
    open my $source, "<", $file or die "$file: $!";
    my $code = <$source>;
    $code =~ s{^\s*//.*}{}mg;
    my @found;
    push @found, [$2, $1] while $code =~ /\{\s*"((?:[^"\\]|\\.)*)",\s*(\d{3})\s*[,}]/g;
    if ($file eq "core/locale_ids.h") { push @found, [$2, $1] while $code =~ /int (\w+) = (\d{3});/g }
    for (@found) {
        my ($id, $words) = @$_;
        next if $id < 120;
        next if ($text{$id} //= $words) eq $words;
        print "$file: $id is \"$text{$id}\" and \"$words\"\n";
        $bad = 1;
    }
}
my $next = 120;
for my $id (sort { $a <=> $b } keys %text) {
    if ($id != $next) { print "no words have the number $next\n"; $bad = 1 }
    $next = $id + 1;
}
exit($bad // 0)'
echo "numbers of words: clean"
