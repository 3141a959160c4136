#!/usr/bin/env bash
# The numbers of translated words, captions and core/locale_ids.h together: each stands for one text, those from
# 120 on follow each other without gaps, and EN.res holds what is built in. Every other file of locales/ has all
# numbers, with the same places for arguments and a mnemonic where English has one; no two entries of a menu or a
# dialogue share theirs.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

git ls-files -co --exclude-standard -- '*.h' '*.cpp' ':!tests' ':!bench' ':!fuzz' ':!samples' | xargs perl -0777 -e '
use utf8;
binmode STDOUT, ":utf8";
my (%text, $bad, $said);
sub complain { print @_, "\n"; $bad = 1 }

for my $file (@ARGV) {
    open my $source, "<:utf8", $file or die "$file: $!";
    my $code = <$source>;
    $code =~ s{^\s*//.*}{}mg;
    my @found;
    if ($file =~ m{^(?:dialogues|diagnostics|shell|engine|entry)/}) {
        push @found, [$2, $1] while $code =~ /(?<!FontSpec)\{\s*"((?:[^"\\]|\\.)*)",\s*(\d+)\s*[,}]/g;
    }
    if ($file eq "core/locale_ids.h") {
        push @found, [$2, $1] while $code =~ /int (?!Last\b)(\w+) = (1[2-9]\d|[2-9]\d\d);/g;
        ($said) = $code =~ /int Last = (\d+);/;
    }
    for (@found) {
        my ($id, $words) = @$_;
        next if ($text{$id} //= $words) eq $words;
        complain("$file: $id is \"$text{$id}\" and \"$words\"");
    }
}
my ($last) = sort { $b <=> $a } keys %text;
$text{$_} // complain("no words have the number $_") for 120 .. $last;
complain("core/locale_ids.h: the last number is $last, not $said") if $said != $last;

sub strings {
    my ($file) = @_;
    open my $lines, "<:utf8", $file or die "$file: $!";
    my $content = <$lines>;
    complain("$file: a line that does not end with CR LF") if $content =~ /(?<!\r)\n/;
    complain("$file: a comment behind a text") if $content =~ /^\d+=.*(?: #|#\t)/m;
    $content =~ /^\[LOCALE=[^;\]]+;([^\]]+)\]\r$/m && "locales/$1.res" eq $file or complain("$file: no header with its language");
    return { map { /^(\d+)=(.*)\r$/ ? ($1, $2) : () } split /(?<=\n)/, $content };
}
sub mnemonic { my $t = shift; $t =~ s/&&//g; return $t =~ /&(.)/ ? lc $1 : "" }
sub arguments { return join " ", sort($_[0] =~ /%\d/g) }

my $english = strings("locales/EN.res");
for my $id (sort { $a <=> $b } keys %text) {
    my $there = $english->{$id} // "nothing";
    complain("locales/EN.res: $id is \"$there\", built in is \"$text{$id}\"") if $there ne $text{$id};
}
my %group = (menu => [9 .. 12, 21], settings => [5, 6, 27 .. 36, 57, 58], transparency => [121, 122], box => [120, 121]);
for my $file (glob "locales/*.res") {
    my $own = strings($file);
    for my $id (1 .. $last) {
        my ($here, $there) = ($own->{$id} // "", $english->{$id} // "-");
        complain("$file: $id is missing") if $here eq "";
        complain("$file: $id has a hyphen for \"$there\"") if $here eq "-" && $there ne "-";
        complain("$file: $id has other arguments than \"$there\"") if arguments($here) ne arguments($there);
        complain("$file: $id has a mnemonic where English has none, or none where it has") if !mnemonic($here) != !mnemonic($there);
    }
    complain("$file: a number beyond $last") if grep { $_ > $last } keys %$own;
    for my $name (sort keys %group) {
        my %taken;
        for my $id (@{$group{$name}}) {
            my $letter = mnemonic($own->{$id} // "");
            next if $letter eq "" || !$taken{$letter}++;
            complain("$file: two mnemonics \"$letter\" in the $name");
        }
    }
}
exit($bad // 0)'
echo "numbers of words: clean"
