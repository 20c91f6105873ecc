# The figures of docs/choosing.md; run by docs/choosing.sh. Curves differ in lightness or dashes.
set datafile separator ","
set datafile commentschars "#"
set border 3 lc rgb "#888888"
set tics nomirror out textcolor rgb "#444444"
set grid ytics lc rgb "#e8e8e8"
set key top right samplen 2.5 textcolor rgb "#333333"
set style line 1 lw 2.2 lc rgb "#123f6d"                # what it is about
set style line 2 lw 1.6 lc rgb "#d07a2c" dt (6,3)       # what it is compared with
set style line 3 lw 3.2 lc rgb "#bdbdbd"                # truth, or what was measured
set style line 4 lw 1.2 lc rgb "#555555" dt (2,3)       # marks
wide = "pngcairo size 860,325 font 'sans,10' background '#ffffff'"
begin = "set terminal ".wide
twoPanels = "set multiplot layout 1,2 margins 0.09,0.98,0.165,0.9 spacing 0.105,0"
onePanel = "set margins 10,3,3.6,2"
figure(name) = "set output 'docs/choosing/".name.".png'"

@begin
eval figure("kernel")
@twoPanels
set title "a detector's peak: zero in the middle"
set xlabel "channels from the peak"
set ylabel "weight"
set arrow 1 from 0, graph 0 to 0, graph 1 nohead ls 4
plot [-45:65] "samples/xrf-zero-peak.csv" using 1:2 with lines ls 1 notitle
set title "a slow recorder: zero at the start"
set xlabel "milliseconds after the click"
plot [-20:140][0:*] work."slow.csv" using (1000 * $1):2 with impulses ls 1 notitle
unset multiplot

eval figure("place")
@onePanel
unset arrow 1
set title "the iron line of the X-ray spectrum, expected at channel 1372"
set xlabel "channel"
set ylabel "counts"
set arrow 1 from 1372, graph 0 to 1372, first 1550 nohead ls 4
set key at graph 0.99, graph 1.0
plot [1290:1423][-100:2100] "samples/xrf-spectrum.csv" using 1:2 with lines ls 3 title "measured", \
    work."place-none.csv" using 1:2 with lines ls 2 title "--origin none: as the module gives it", \
    work."place-auto.csv" using 1:2 with lines ls 1 title "moved by the kernel's zero and the lag"
set key inside top right
unset arrow 1

eval figure("strength")
@twoPanels
stats work."curve.csv" using 4 nooutput
lowest = STATS_min
stats work."curve.csv" using 1:4 nooutput
chosen = STATS_pos_min_y
stats work."errors.csv" using 2 nooutput
set title "what the data say, and what is true"
set xlabel "steps"
set ylabel "relative to the smallest"
set logscale x
set arrow 1 from chosen, graph 0 to chosen, graph 0.8 nohead ls 4
set label 1 sprintf("%d steps", chosen) at chosen, graph 0.83 center textcolor rgb "#333333"
set key at graph 0.74, graph 0.99
plot [1:20000][0.95:2] work."errors.csv" using 1:($2 / STATS_min) with lines ls 3 title "true error", \
    work."curve.csv" using 1:($4 / lowest) with lines ls 1 title "criterion"
unset logscale x
unset arrow 1
unset label 1
set title "too few, right, too many"
set xlabel "channel"
set ylabel "counts"
set key inside top right
plot [655:755] "samples/xrf-spectrum.csv" using 1:2 with lines ls 3 title "truth", \
    work."weak.csv" using 1:2 with lines ls 4 lw 1.8 title "1 step", \
    work."strong.csv" using 1:2 with lines ls 2 title "5000 steps", \
    work."right.csv" using 1:2 with lines ls 1 title sprintf("%d steps", chosen)
unset multiplot

eval figure("regularized")
@twoPanels
set xlabel "seconds"
set ylabel "mV"
set title "division as it is: the noise is amplified"
plot [0.4:1.6][-1.2:2.2] work."slowly-noisy.csv" using 1:2 with lines ls 3 title "recorded", \
    work."divided.csv" using 1:2 with lines ls 1 lw 1.2 title "divided"
set title "regularised, with the strength that the data allow"
plot [0.4:1.6][-1.2:2.2] "samples/ecg.csv" using 1:2 with lines ls 3 title "truth", \
    work."regularized.csv" using 1:2 with lines ls 1 lw 1.4 title "--auto"
unset multiplot

eval figure("oversampling")
@onePanel
set title "error of the iteration on the slow recorder, noise a thousandth"
set xlabel "steps"
set ylabel "relative error"
set logscale xy
plot [1:700][0.005:2] work."oversampled-1.csv" using 1:2 with linespoints ls 2 pt 7 ps 0.6 title "as it is: the lag makes it diverge", \
    work."oversampled-4.csv" using 1:2 with linespoints ls 1 pt 7 ps 0.6 title "--oversample 4"
unset logscale

eval figure("ends")
set multiplot layout 1,2 margins 0.09,0.98,0.165,0.9 spacing 0.105,0
set xlabel "seconds"
set ylabel "mV"
set key inside top right
do for [half = 1:2] {
    set title half == 1 ? "beginning of the part" : "its end"
    set xrange [half == 1 ? 0.55 : 3.1 : half == 1 ? 0.85 : 3.4]
    plot work."part-truth.csv" using 1:2 with lines ls 3 lw 5 title "truth", \
        work."ends-periodic.csv" using 1:2 with lines ls 2 title "--ends periodic", \
        work."ends-odd.csv" using 1:2 with lines ls 1 title "--ends odd"
}
unset multiplot

eval figure("band")
@onePanel
set title "what the noise leaves open (95 %), and what the kernel has wiped out"
set xlabel "channel"
set ylabel "counts"
set arrow 1 from 995 - resolution / 2, 335 to 995 + resolution / 2, 335 heads size 1.2,20 lc rgb "#333333"
set label 1 sprintf("resolution: %.0f channels", resolution) at 995, 305 center textcolor rgb "#333333"
plot [930:1060] work."band.csv" using 1:3:4 with filledcurves fc rgb "#b3cbe4" title "band", \
    "samples/xrf-spectrum.csv" using 1:2 with points pt 7 ps 0.5 lc rgb "#555555" title "truth, with its own counting noise", \
    work."band.csv" using 1:2 with lines ls 1 title "result"
unset arrow 1
unset label 1

eval figure("sweep")
set title "impulse response of the street, measured by a sweep with noise 50 dB below it"
set xlabel "seconds"
set ylabel "level of 10 ms, in dB of the peak"
plot [0:1][-110:0] work."sweep-divided.csv.levels" using 1:2 with lines ls 2 title "divided", \
    work."sweep-band.csv.levels" using 1:2 with lines ls 1 title "--frequencies 60:7400"
