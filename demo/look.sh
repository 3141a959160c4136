# Sourced by the demonstrations: the calendar on a box of its own in light colours, so that it can be read on
# every picture. `ctl KEY DATA` sets one value of the tree.
ctl 'General\Calendar position' 1
ctl 'General\Use calendar background' 1
ctl 'Colors\Calendar background color' 3815994
ctl 'Colors\Holiday color' 8026879
ctl 'Colors\Holiday color minor' 8026879
ctl 'Colors\Week number color' 7908010
ctl 'Colors\Workday color' 15790320
ctl 'Colors\Caption color' 16777215
ctl 'Colors\Week caption color' 13158600
ctl 'Colors\Sun Ephemeredes color' 10092543
ctl 'Colors\Moon Ephemeredes color' 16766150
