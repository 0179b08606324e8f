#ifndef KELD_TOOLS_REPORT_STYLE_H
#define KELD_TOOLS_REPORT_STYLE_H

namespace keld {

/// The style of the report page. Narrow screens have one column, wide ones two.
inline constexpr char const * ReportStyle = R"(:root {
  --back: #f4f5f7; --panel: #ffffff; --text: #1b1f24; --dim: #5b6572; --line: #dfe3e8;
  --accent: #1f5fbf; --good: #17703a; --good-back: #e2f4e8; --odd: #8a5300; --odd-back: #fdf0d9;
  --bad: #b3261e; --bad-back: #fce8e6; --note-back: #e6eefb;
  --sky: #f7f9fb; --ground: #d9e0e8;
}
@media (prefers-color-scheme: dark) {
  :root {
    --back: #111418; --panel: #1a1f25; --text: #e6e9ed; --dim: #9aa5b1; --line: #2e353d;
    --accent: #8ab4f8; --good: #7fd79b; --good-back: #15301f; --odd: #f2bd67; --odd-back: #382a12;
    --bad: #ff9d94; --bad-back: #40201d; --note-back: #1c2c47;
    --sky: #2b333d; --ground: #14181d;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 1rem; max-width: 72rem; background: var(--back); color: var(--text);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "DejaVu Sans", sans-serif;
}
h1, h2, h3, p, dl, dd, ul { margin: 0; padding: 0; }
ul { list-style: none; }
h1 { font-size: 1.6rem; line-height: 1.25; }
h2 { font-size: 1.1rem; margin-bottom: .6rem; }
h3 { font-size: .85rem; color: var(--dim); margin: .8rem 0 .2rem; }
bdi, dd, th { overflow-wrap: anywhere; }
header { padding: .5rem 0 1rem; }
.kind { color: var(--accent); font-size: .85rem; font-weight: 600; }
dl { display: grid; grid-template-columns: auto 1fr; gap: .25rem .9rem; margin-top: .7rem; }
dt, .none, .type, .more, .level { color: var(--dim); }
.none { font-weight: 400; }
.explanation { margin-top: .5rem; color: var(--bad); }
.cards {
  display: grid; grid-template-columns: repeat(auto-fit, minmax(7.5rem, 1fr)); gap: .6rem;
  margin-top: 1rem;
}
.cards li {
  background: var(--panel); border: 1px solid var(--line); border-radius: .6rem;
  padding: .6rem .8rem; color: var(--dim); font-size: .9rem;
}
.cards b { display: block; font-size: 1.5rem; line-height: 1.2; color: var(--text); }
.cards .bad b { color: var(--bad); }
.cards .odd b { color: var(--odd); }
main { display: grid; gap: 1rem; grid-template-columns: minmax(0, 1fr); }
section {
  background: var(--panel); border: 1px solid var(--line); border-radius: .6rem; padding: 1rem;
  min-width: 0;
}
.badge {
  display: inline-block; border-radius: .4rem; padding: 0 .45rem; font-size: .8rem;
  font-weight: 600; background: var(--note-back); color: var(--accent);
}
.badge.completed { background: var(--good-back); color: var(--good); }
.badge.warning, .badge.cancelled { background: var(--odd-back); color: var(--odd); }
.badge.error, .badge.failed { background: var(--bad-back); color: var(--bad); }
#lost p + p, #lost p + ul, #lost ul + p { margin-top: .5rem; }
p.good { color: var(--good); }
p.odd { color: var(--odd); }
p.bad { color: var(--bad); }
.lost b { color: var(--bad); }
.lost .rows { margin: .1rem 0 .6rem; padding-left: .8rem; border-left: 2px solid var(--bad); }
.lost .rows li { border: 0; padding: .1rem 0; }
.lost .total { color: var(--dim); }
table { width: 100%; border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { padding: .3rem .2rem; border-top: 1px solid var(--line); text-align: right; }
th:first-child { text-align: left; }
tbody th { font-weight: 400; }
thead th { border-top: 0; color: var(--dim); font-size: .85rem; font-weight: 600; }
tr.bad td:nth-of-type(2) { color: var(--bad); font-weight: 600; }
tr.total th, tr.total td { border-top-width: 2px; font-weight: 600; }
tr.total th { text-transform: capitalize; }
.rows li { padding: .35rem 0; border-top: 1px solid var(--line); }
.rows li:first-child { border-top: 0; }
.rows .about { font-weight: 600; }
.rows .text {
  display: block; max-height: 20rem; overflow: auto; white-space: pre-wrap;
}
.rows .indented { padding-left: 2rem; }
.rows .quiet .text { color: var(--dim); }
.tree li { padding: .15rem 0 .15rem .7rem; border-left: 2px solid var(--line); }
.tree .name { white-space: pre-wrap; }
.tree .assembly .name { font-weight: 600; }
.tree .instance { border-left-style: dashed; border-left-color: var(--accent); }
.tree .instance .name { font-style: italic; }
.tree .type, .level { font-size: .85rem; }
.l1 { margin-left: 1rem; } .l2 { margin-left: 2rem; } .l3 { margin-left: 3rem; }
.l4 { margin-left: 4rem; } .l5 { margin-left: 4.6rem; } .l6 { margin-left: 5.2rem; }
.l7 { margin-left: 5.8rem; } .l8 { margin-left: 6.4rem; } .l9 { margin-left: 7rem; }
.l10 { margin-left: 7.4rem; } .l11 { margin-left: 7.8rem; } .l12 { margin-left: 8.2rem; }
.more { margin-top: .6rem; }
.picture {
  position: relative; width: 100%; aspect-ratio: 8 / 5; max-height: 75vh; overflow: hidden;
  border-radius: .4rem; background: linear-gradient(var(--sky), var(--ground));
}
.picture img, .picture canvas {
  position: absolute; top: 0; left: 0; width: 100%; height: 100%; object-fit: contain;
}
.picture canvas { visibility: hidden; touch-action: none; cursor: grab; outline-offset: -3px; }
.picture canvas.held { cursor: grabbing; }
.picture canvas:focus-visible { outline: 3px solid var(--accent); }
.picture.live canvas { visibility: visible; }
.picture.live img { visibility: hidden; }
#view .about { margin-top: .6rem; color: var(--dim); font-size: .9rem; }
@media (min-width: 56rem) {
  body { padding: 2rem; }
  main { grid-template-columns: minmax(0, 2fr) minmax(0, 3fr); align-items: start; }
  #view, #lost, #entries, #log { grid-column: 1 / -1; }
}
@media print {
  body { background: none; padding: 0; }
  section, .cards li { break-inside: avoid; }
  .rows .text { max-height: none; }
  .picture.live canvas { visibility: hidden; }
  .picture.live img { visibility: visible; }
}
)";

} // namespace keld

#endif
