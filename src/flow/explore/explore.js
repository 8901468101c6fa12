'use strict';
// Draws the points over two of their figures, and keeps plot, details and table in step.
(() => {
  const data = JSON.parse(document.getElementById('data').textContent);
  const points = data.points;
  const at = (id) => document.getElementById(id);
  const picture = at('picture');
  const figures = [
    ['latency', 'latency, cycles'], ['cells', 'look-up tables and flip-flops'], ['look_up_tables', 'look-up tables'],
    ['flip_flops', 'flip-flops'], ['multipliers', 'multiplier blocks'], ['register_bits', 'delay lines, bits'],
    ['largest_ulp', 'largest error, ulp'], ['median_ulp', 'median error, ulp'],
  ];
  const told = (point) => point.options || 'defaults';
  const value = (point, name) => name === 'cells' ? point.look_up_tables + point.flip_flops : point[name];
  const number = (figure) => figure === null ? '-' : figure >= 1e6 ? figure.toPrecision(3)
    : String(Math.round(figure * 1000) / 1000);
  const mark = (point) => point.not_measured ? '>' : point.derived ? '~' : '';
  let chosen = -1;

  function element(name, attributes, text) {
    const made = document.createElementNS('http://www.w3.org/2000/svg', name);
    Object.entries(attributes).forEach(([key, one]) => made.setAttribute(key, one));
    if (text !== undefined) made.textContent = text;
    return made;
  }

  // ---- Axes ----

  /** Round numbers that cover the figures: the least, the greatest, and the step between lines. */
  function axis_of(name, shown) {
    const all = shown.map((point) => value(point, name)).filter((one) => one !== null);
    let low = Math.min(...all);
    let high = Math.max(...all);
    if (!(high > low)) {
      low = Number.isFinite(low) ? low - 1 : 0;
      high = low + 2;
    }
    const rough = (high - low) / 6;
    const power = 10 ** Math.floor(Math.log10(rough));
    const step = [1, 2, 5, 10].map((one) => one * power).find((one) => one >= rough);
    return { name, low: Math.floor(low / step - 0.2) * step, high: Math.ceil(high / step + 0.2) * step, step };
  }

  const margin = { left: 74, right: 24, top: 16, bottom: 44 };
  let view = null;

  function place_of(point) {
    const box = picture.getBoundingClientRect();
    const part = (axis) => ((value(point, axis.name) ?? axis.low) - axis.low) / (axis.high - axis.low);
    return {
      x: margin.left + part(view.across) * (box.width - margin.left - margin.right),
      y: box.height - margin.bottom - part(view.up) * (box.height - margin.top - margin.bottom),
    };
  }

  function draw_axis(axis, is_across, box) {
    const title = figures.find((one) => one[0] === axis.name)[1];
    const bottom = box.height - margin.bottom;
    for (let tick = axis.low; tick <= axis.high + axis.step / 2; tick += axis.step) {
      const part = (tick - axis.low) / (axis.high - axis.low);
      const x = margin.left + part * (box.width - margin.left - margin.right);
      const y = bottom - part * (bottom - margin.top);
      picture.append(is_across
        ? element('line', { class: 'grid', x1: x, x2: x, y1: margin.top, y2: bottom })
        : element('line', { class: 'grid', x1: margin.left, x2: box.width - margin.right, y1: y, y2: y }));
      picture.append(is_across
        ? element('text', { x, y: bottom + 16, 'text-anchor': 'middle' }, number(tick))
        : element('text', { x: margin.left - 8, y: y + 4, 'text-anchor': 'end' }, number(tick)));
    }
    picture.append(is_across
      ? element('text', { x: box.width / 2, y: box.height - 8, 'text-anchor': 'middle' }, title)
      : element('text', { x: 14, y: box.height / 2, 'text-anchor': 'middle',
        transform: `rotate(-90 14 ${box.height / 2})` }, title));
  }

  function draw() {
    const shown = points.filter((point) => point.front || !at('only').checked);
    const box = picture.getBoundingClientRect();
    view = { across: axis_of(at('across').value, shown), up: axis_of(at('up').value, shown), shown };
    picture.replaceChildren();
    draw_axis(view.across, true, box);
    draw_axis(view.up, false, box);
    // The front has more sides than a picture; the line joins what is best in these two.
    let best = Infinity;
    const line = shown.filter((point) => point.front)
      .sort((a, b) => value(a, view.across.name) - value(b, view.across.name) ||
        value(a, view.up.name) - value(b, view.up.name))
      .filter((point) => value(point, view.up.name) < best && ((best = value(point, view.up.name)), true));
    picture.append(element('polyline', { class: 'front-line',
      points: line.map(place_of).map((place) => `${place.x},${place.y}`).join(' ') }));
    shown.slice().sort((a, b) => a.front - b.front).forEach((point) => {
      const index = points.indexOf(point);
      const place = place_of(point);
      const dot = element('circle', { cx: place.x, cy: place.y, r: point.front ? 6 : 4.5, 'data-point': index,
        class: (point.front ? 'front ' : '') + (index === chosen ? 'chosen' : '') });
      dot.addEventListener('pointerenter', () => hint(index));
      dot.addEventListener('pointerleave', () => hint(-1));
      dot.addEventListener('click', () => choose(index));
      picture.append(dot);
    });
    picture.dataset.drawn = shown.length;
  }

  // ---- What is told ----

  function lines_of(point) {
    return `${point.latency} cycles, ${mark(point)}${point.look_up_tables} look-up tables, ` +
      `${mark(point)}${point.flip_flops} flip-flops, ${mark(point)}${point.multipliers} multiplier blocks, ` +
      `${point.register_bits} bits in delay lines; ${point.megahertz ? `below ${number(point.megahertz)} MHz; ` : ''}largest error ${number(point.largest_ulp)} ulp, ` +
      `median ${number(point.median_ulp)} ulp`;
  }

  function hint(index) {
    at('hint').hidden = index < 0;
    if (index < 0) return;
    const place = place_of(points[index]);
    const box = picture.getBoundingClientRect();
    at('hint').textContent = told(points[index]) + '\n' + lines_of(points[index]);
    at('hint').style.left = Math.max(0, Math.min(place.x + 12, box.width - at('hint').offsetWidth - 8)) + 'px';
    at('hint').style.top = Math.max(0, Math.min(place.y + 12, box.height - at('hint').offsetHeight - 8)) + 'px';
  }

  const keys = at('details').innerHTML;

  function choose(index) {
    chosen = index;
    document.querySelectorAll('[data-point]')
      .forEach((one) => one.classList.toggle('chosen', Number(one.dataset.point) === index));
    picture.dataset.chosen = index < 0 ? '' : told(points[index]);
    if (index < 0) {
      at('details').innerHTML = keys;
      return;
    }
    const point = points[index];
    const same = point.same.length ? `<p>The same comes out with ${point.same.length} more: ` +
      point.same.map((one) => `<code>${one || 'defaults'}</code>`).join('; ') + '</p>' : '';
    at('details').innerHTML = `<p><code>xfcflow build ${data.source} ${data.options} ${point.options}</code></p>` +
      `<p>${point.front ? 'On the front. ' : ''}${lines_of(point)}.</p>${same}`;
  }

  function write_table() {
    const columns = [['front', ''], ['latency', 'cycles'], ['register_bits', 'delay bits'],
      ['look_up_tables', 'tables'], ['flip_flops', 'flip-flops'], ['multipliers', 'blocks'],
      ['largest_ulp', 'largest ulp'], ['median_ulp', 'median'], ['options', 'options']];
    const cell = (point, name) => name === 'front' ? (point.front ? '*' : '')
      : name === 'options' ? told(point)
        : (['look_up_tables', 'flip_flops', 'multipliers'].includes(name) ? mark(point) : '') + number(point[name]);
    const row = (kind, texts) => {
      const line = document.createElement('tr');
      texts.forEach((text, place) => {
        const one = document.createElement(kind);
        one.textContent = text;
        if (place > 0 && place < texts.length - 1) one.className = 'number';
        line.append(one);
      });
      return line;
    };
    document.querySelector('thead').append(row('th', columns.map((one) => one[1])));
    points.forEach((point, index) => {
      const line = row('td', columns.map((one) => cell(point, one[0])));
      line.dataset.point = index;
      if (point.front) line.classList.add('front');
      line.addEventListener('click', () => choose(index));
      document.querySelector('tbody').append(line);
    });
  }

  // ---- Keys ----

  /** The nearest point that lies more to the side of (x, y) than to any other; the chosen one when there is none. */
  function neighbour(x, y) {
    const from = place_of(points[chosen]);
    let best = chosen;
    let least = Infinity;
    view.shown.forEach((point) => {
      const place = place_of(point);
      const along = (place.x - from.x) * x + (place.y - from.y) * y;
      const aside = Math.abs((place.x - from.x) * y) + Math.abs((place.y - from.y) * x);
      if (along > 0.5 && along + 3 * aside < least) {
        least = along + 3 * aside;
        best = points.indexOf(point);
      }
    });
    return best;
  }

  picture.addEventListener('keydown', (event) => {
    const sides = { ArrowRight: [1, 0], ArrowLeft: [-1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
    const front = view.shown.filter((point) => point.front)
      .sort((a, b) => value(a, view.across.name) - value(b, view.across.name));
    if (event.key in sides) {
      choose(chosen < 0 ? points.indexOf(front[0]) : neighbour(...sides[event.key]));
    } else if (event.key === 'Home' || event.key === 'End') {
      choose(points.indexOf(event.key === 'Home' ? front[0] : front[front.length - 1]));
    } else if (event.key === 'f') {
      at('only').checked = !at('only').checked;
      draw();
    } else if (event.key === 'Escape') {
      choose(-1);
    } else {
      return;
    }
    event.preventDefault();
  });

  // ---- Start ----

  figures.forEach(([name, title]) => ['across', 'up'].forEach((select) => at(select).append(new Option(title, name))));
  at('across').value = 'latency';
  at('up').value = 'cells';
  ['across', 'up', 'only'].forEach((id) => at(id).addEventListener('change', draw));
  at('figures').textContent = `${data.source} for ${data.family_text}: ${points.length} designs, ` +
    `${points.filter((point) => point.front).length} on the front; errors over ${data.vectors} vectors`;
  at('costs').textContent = ['~: partly derived from measurements of the same component set otherwise; >: components ' +
    'that were not measured come on top'].concat(data.costs).join('\n');
  write_table();
  picture.dataset.chosen = '';
  new ResizeObserver(draw).observe(at('plot'));
  draw();
})();
