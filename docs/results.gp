set terminal pngcairo size 1500,760 font "sans,11" background "#ffffff"
set output "docs/results.png"
set multiplot layout 3,2 columns margins 0.06,0.98,0.09,0.94 spacing 0.07,0.06
set border 3 lc rgb "#888888"
set tics nomirror textcolor rgb "#444444"
set grid ytics lc rgb "#e4e4e4"
unset key
set style line 1 lw 1 lc rgb "#1f5a96"
set style line 2 lw 1 lc rgb "#b5482a"

set xrange [0:2.8]
set yrange [-0.55:0.55]
set format x ""
set title "speech, recorded dry" offset 0,-0.6
plot scratch."speech" with lines ls 1
set title "convolved: in a street" offset 0,-0.6
plot scratch."wet" with lines ls 2
set format x "%g"
set xlabel "seconds" offset 0,0.6
set title "deconvolved: dry again, relative error 8.6e-15" offset 0,-0.6
plot scratch."dry" with lines ls 1

set datafile separator ","
set xrange [400:1423]
set yrange [0:1500]
set format x ""
unset xlabel
set title "X-ray spectrum, counts" offset 0,-0.6
plot "samples/xrf-spectrum.csv" using 1:2 with lines ls 1
set title "convolved: blurred by the detector" offset 0,-0.6
plot "out/blurred.csv" using 1:2 with lines ls 2
set format x "%g"
set xlabel "channel" offset 0,0.6
set title "deconvolved: restored, relative error 6e-11" offset 0,-0.6
plot "out/restored.csv" using 1:2 with lines ls 1
