'use strict';
(() => {
  const panes = JSON.parse(document.getElementById('numbers').textContent);
  const picture = document.getElementById('picture');
  const readout = document.getElementById('readout');
  const svg = picture.querySelector('svg');
  if (!svg || panes.length === 0) {
    return;
  }
  document.getElementById('hint').hidden = false;
  picture.tabIndex = 0;

  const digits = (value, count) => (typeof value === 'number' ? String(Number(value.toPrecision(count))) : value);
  const logOf = (pane, x) => (pane.log ? Math.log(x) : x);

  // Between places of the axis and of the picture.
  const across = (pane, x) => {
    const [low, high] = pane.x.map((end) => logOf(pane, end));
    return pane.frame[0] + ((logOf(pane, x) - low) / (high - low)) * pane.frame[2];
  };
  const placeAt = (pane, left) => {
    const [low, high] = pane.x.map((end) => logOf(pane, end));
    const x = low + ((left - pane.frame[0]) / pane.frame[2]) * (high - low);
    return pane.log ? Math.exp(x) : x;
  };

  const placeOf = (graph, i) => (graph.places ? graph.places[i] : graph.start + i * graph.step);
  // The column of a graph that is nearest to a place; -1: the place is outside.
  const columnAt = (pane, graph, x) => {
    const count = graph.low.length;
    if (!graph.places) {
      const i = Math.round((x - graph.start) / graph.step);
      return i >= 0 && i < count ? i : -1;
    }
    const far = (i) => Math.abs(across(pane, graph.places[i]) - across(pane, x));
    let best = -1;
    for (let i = 0; i < count; i += 1) {
      best = best < 0 || far(i) < far(best) ? i : best;
    }
    return best;
  };

  const valueText = (graph, i) => {
    if (graph.low[i] === null) {
      return 'NaN';
    }
    const several = graph.high && graph.high[i] !== graph.low[i];
    const value = several ? `${digits(graph.low[i], 6)} \u2026 ${digits(graph.high[i], 6)}` : digits(graph.low[i], 6);
    return graph.lower ? `${value} [${digits(graph.lower[i], 6)}, ${digits(graph.upper[i], 6)}]` : value;
  };

  const cursors = panes.map((pane) => {
    const line = document.createElementNS('http://www.w3.org/2000/svg', 'line');
    line.setAttribute('class', 'cursor');
    line.setAttribute('y1', pane.frame[1]);
    line.setAttribute('y2', pane.frame[1] + pane.frame[3]);
    line.setAttribute('visibility', 'hidden');
    svg.appendChild(line);
    return line;
  });

  const addLine = (tag, text) => {
    const line = document.createElement(tag);
    line.textContent = text;
    readout.appendChild(line);
  };

  let shown = -1;
  let place = 0;

  const hide = () => {
    shown = -1;
    readout.hidden = true;
    cursors.forEach((line) => line.setAttribute('visibility', 'hidden'));
  };

  const moveCursors = () => {
    panes.forEach((pane, i) => {
      const moves = (i === shown || (pane.linked && panes[shown].linked)) && place >= pane.x[0] && place <= pane.x[1];
      const left = moves ? across(pane, place) : 0;
      cursors[i].setAttribute('x1', left);
      cursors[i].setAttribute('x2', left);
      cursors[i].setAttribute('visibility', moves ? 'visible' : 'hidden');
    });
  };

  // Beside the cursor, on the side where there is room in the part of the picture that is seen.
  const moveReadout = (pane) => {
    const matrix = svg.getScreenCTM();
    const box = picture.getBoundingClientRect();
    const seen = picture.parentElement.getBoundingClientRect();
    const left = across(pane, place) * matrix.a + matrix.e - box.left;
    const fits = left + 12 + readout.offsetWidth <= seen.right - box.left;
    const beside = fits ? left + 12 : left - 12 - readout.offsetWidth;
    readout.style.left = `${Math.max(seen.left - box.left, beside)}px`;
    readout.style.top = `${pane.frame[1] * matrix.d + matrix.f - box.top + 8}px`;
  };

  // The values of a pane at a place of its axis, or of the sample nearest to it.
  const show = (which, x) => {
    const pane = panes[which];
    shown = which;
    const found = pane.graphs.map((graph) => columnAt(pane, graph, x));
    const first = found.findIndex((column) => column >= 0);
    place = first < 0 ? x : placeOf(pane.graphs[first], found[first]);
    readout.replaceChildren();
    addLine('strong', `${pane.label}: ${digits(place, 7)}`);
    pane.graphs.forEach((graph, i) => {
      if (found[i] >= 0) {
        addLine('span', `${graph.name}: ${valueText(graph, found[i])}`);
      }
    });
    readout.hidden = false;
    moveCursors();
    moveReadout(pane);
  };

  const pointed = (event) => {
    const point = new DOMPoint(event.clientX, event.clientY).matrixTransform(svg.getScreenCTM().inverse());
    const which = panes.findIndex(({ frame }) =>
      point.x >= frame[0] && point.x <= frame[0] + frame[2] && point.y >= frame[1] && point.y <= frame[1] + frame[3]);
    if (which < 0) {
      hide();
    } else {
      show(which, placeAt(panes[which], point.x));
    }
  };

  // So many columns further.
  const step = (direction, times) => {
    const pane = panes[shown];
    const [least, most] = pane.x;
    const graph = pane.graphs[0];
    const column = graph ? columnAt(pane, graph, place) : -1;
    const next = column < 0 ? -1 : Math.min(Math.max(column + direction * times, 0), graph.low.length - 1);
    const x = next < 0 ? placeAt(pane, across(pane, place) + direction * times) : placeOf(graph, next);
    show(shown, Math.min(Math.max(x, least), most));
  };

  const middle = (pane) => placeAt(pane, pane.frame[0] + pane.frame[2] / 2);
  const enter = (which) => {
    const isLinked = shown >= 0 && panes[which].linked && panes[shown].linked;
    show(which, isLinked ? place : middle(panes[which]));
  };
  const keys = {
    ArrowLeft: (times) => step(-1, times),
    ArrowRight: (times) => step(1, times),
    ArrowUp: () => enter(Math.max(shown - 1, 0)),
    ArrowDown: () => enter(Math.min(shown + 1, panes.length - 1)),
    Escape: hide,
  };

  picture.addEventListener('pointermove', pointed);
  picture.addEventListener('pointerdown', pointed);
  picture.addEventListener('pointerleave', hide);
  picture.addEventListener('blur', hide);
  picture.addEventListener('keydown', (event) => {
    const action = keys[event.key];
    if (!action || event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    event.preventDefault();
    if (shown < 0) {
      enter(0);
    } else {
      action(event.shiftKey ? 10 : 1);
    }
  });
})();
