# includes.pl HEADER...: whether each source and header of the workbench and of the tests includes those of
# these headers that it uses, by itself or by the headers of the project that it includes. They have been
# compiled before, so no compiler misses one.
use strict;
use warnings;

my %names = (
    'algorithm' => 'std::(?:ranges::)?(?:min|max|clamp|minmax|\w+_element|\w*sort|copy\w*|fill\w*|find\w*|count\w*|search|equal|mismatch|(?:all|any|none)_of|transform|reverse|rotate|remove_\w+|replace\w*|unique|generate\w*|for_each|\w+_bound|binary_search|swap_ranges)\(',
    'cmath' => 'std::(?:abs|sqrt|cbrt|sin|cos|tan|atan2?|a?sinh|exp2?|expm1|log(?:2|10|1p)?|pow|floor|ceil|l?l?round|trunc|fmod|hypot|is(?:finite|nan|inf)|signbit|ldexp|frexp|nextafter|erfc?)\(',
    'cstdint' => 'std::u?int(?:8|16|32|64|ptr|max)_t',
    'filesystem' => 'std::filesystem::',
    'fmt/format.h' => 'fmt::(?:format|runtime|vformat|make_format_args|to_string)',
    'functional' => 'std::(?:function<|less|greater|plus|multiplies|c?ref\()',
    'limits' => 'std::numeric_limits',
    'map' => 'std::(?:multi)?map<',
    'memory' => 'std::(?:unique_ptr|shared_ptr|weak_ptr|make_unique|make_shared)',
    'optional' => 'std::(?:optional\b|nullopt)',
    'string' => 'std::(?:string\b|to_string\(|getline\()',
    'string_view' => 'std::string_view',
    'utility' => 'std::(?:move\(|forward<|pair<|exchange\(|swap\()',
    'vector' => 'std::vector<');

my (%text, %includes);
for my $path (split /\n/, `find workbench tests host frame signal transform matrix kernels platform resources -name '*.h' -o -name '*.cpp'`) {
    open(my $file, '<', $path) or die "$path: $!";
    local $/;
    $text{$path} = <$file>;
    $includes{$path} = [$text{$path} =~ /^#include [<"]([^>"]+)[>"]/mg];
    $text{$path} =~ s{//.*|"(?:[^"\\\n]|\\.)*"}{}g;
}

sub reach {
    my ($path, $reached) = @_;
    for my $header (@{$includes{$path} // []}) {
        reach($header, $reached) unless $reached->{$header}++;
    }
    return $reached;
}

my $missed = 0;
for my $path (sort grep { /^(?:workbench|tests)/ } keys %text) {
    my $reached = reach($path, {});
    for my $header (@ARGV) {
        my $uses = $names{$header} // die "What does <$header> name?\n";
        if ($text{$path} =~ /\b($uses)/ && !$reached->{$header}) {
            print "$path uses $1 and does not include <$header>\n";
            $missed = 1;
        }
    }
}
exit $missed;
