#ifndef KELD_TOOLS_VIEW_VIEW_SCRIPT_H
#define KELD_TOOLS_VIEW_VIEW_SCRIPT_H

namespace keld::view {

/// What turns the still picture of a page into one that can be turned. It loads nothing, and where
/// anything is missing that it needs, the still picture stays.
inline constexpr char const * ViewScript = R"script(
'use strict';
(() => {
const picture = document.getElementById('picture');
const hint = document.getElementById('picture-hint');
const scene = JSON.parse(document.getElementById('scene').textContent);
const home = scene.camera;
const canvas = document.createElement('canvas');
const gl = canvas.getContext('webgl2', {antialias: true});
if (!gl) {
  picture.dataset.state = 'still: no WebGL 2';
  return;
}

const vertexSource = `#version 300 es
in vec4 place;
in vec2 normal;
in vec3 axisX, axisY, axisZ, origin, tint;
uniform vec3 size, target;
uniform vec4 view[3];
uniform vec3 scale;
uniform highp sampler2D palette;
out vec3 seen, seenNormal, colour;
vec3 turned(vec3 v) {
  return vec3(dot(view[0].xyz, v), dot(view[1].xyz, v), dot(view[2].xyz, v));
}
void main() {
  vec3 local = place.xyz * size;
  seen = turned(mat3(axisX, axisY, axisZ) * local + origin - target);
  vec3 n = vec3(normal, 1.0 - abs(normal.x) - abs(normal.y));
  if (n.z < 0.0)
    n.xy = (1.0 - abs(n.yx)) * vec2(n.x < 0.0 ? -1.0 : 1.0, n.y < 0.0 ? -1.0 : 1.0);
  seenNormal = turned(mat3(cross(axisY, axisZ), cross(axisZ, axisX), cross(axisX, axisY)) * n);
  int number = int(place.w * 65535.0 + 0.5) - 1;
  colour = number < 0 ? tint : texelFetch(palette, ivec2(number & 255, number >> 8), 0).rgb;
  gl_Position = vec4(seen * scale, 1.0);
}`;

// The light is that of the still picture.
const fragmentSource = `#version 300 es
precision highp float;
in vec3 seen, seenNormal, colour;
uniform bool hasNormals;
out vec4 result;
void main() {
  vec3 side = cross(dFdx(seen), dFdy(seen));
  side = dot(side, side) > 0.0 ? normalize(side) : vec3(0.0, 0.0, 1.0);
  if (side.z < 0.0)
    side = -side;
  vec3 n = side;
  if (hasNormals && dot(seenNormal, seenNormal) > 0.0) {
    n = normalize(seenNormal);
    if (dot(n, side) < 0.0)
      n = -n;
  }
  float lamp = max(0.0, dot(n, vec3(-0.40, 0.56, 0.726)));
  float gloss = pow(max(0.0, dot(n, vec3(-0.215, 0.301, 0.929))), 32.0);
  float light = 0.36 + 0.16 * (0.5 + 0.5 * n.y) + 0.4 * lamp + 0.24 * n.z;
  result = vec4(light * (0.95 * colour + 0.05) + 0.14 * gloss, 1.0);
}`;

// What the vertex shader reads, by number.
const [Place, Normal, AxisX, AxisY, AxisZ, Origin, Tint] = [0, 1, 2, 3, 4, 5, 6];

function bytesOfMeshes() {
  const text = atob(document.getElementById('meshes').textContent);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i)
    bytes[i] = text.charCodeAt(i);
  return bytes;
}

function compiled() {
  const program = gl.createProgram();
  for (const [type, source] of
       [[gl.VERTEX_SHADER, vertexSource], [gl.FRAGMENT_SHADER, fragmentSource]]) {
    const shader = gl.createShader(type);
    gl.shaderSource(shader, source);
    gl.compileShader(shader);
    gl.attachShader(program, shader);
  }
  ['place', 'normal', 'axisX', 'axisY', 'axisZ', 'origin', 'tint'].forEach(
      (name, number) => gl.bindAttribLocation(program, number, name));
  gl.linkProgram(program);
  if (!gl.getProgramParameter(program, gl.LINK_STATUS))
    throw new Error('the shaders do not link');
  return program;
}

function shares(colour) {
  return [(colour >> 16) / 255, (colour >> 8 & 255) / 255, (colour & 255) / 255];
}

function makePalette() {
  const width = 256;
  const height = Math.max(1, Math.ceil(scene.palette.length / width));
  const texels = new Uint8Array(4 * width * height);
  scene.palette.forEach((colour, i) =>
      texels.set([colour >> 16, colour >> 8 & 255, colour & 255, 255], 4 * i));
  gl.bindTexture(gl.TEXTURE_2D, gl.createTexture());
  gl.texParameteri(gl.TEXTURE_2D, gl.TEXTURE_MIN_FILTER, gl.NEAREST);
  gl.texParameteri(gl.TEXTURE_2D, gl.TEXTURE_MAG_FILTER, gl.NEAREST);
  gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, width, height, 0, gl.RGBA, gl.UNSIGNED_BYTE, texels);
}

// The occurrences of a mesh, fifteen numbers each. The scene is moved and scaled, so that the
// numbers suit the precision of a graphics card.
function placesOf(low, occurrences) {
  const numbers = [];
  for (const [, colour, x, y, z, origin] of occurrences) {
    const start = origin.map((o, i) =>
        (x[i] * low[0] + y[i] * low[1] + z[i] * low[2] + o - home.target[i]) / home.radius);
    numbers.push(...x, ...y, ...z, ...start, ...shares(colour));
  }
  return new Float32Array(numbers);
}

function fill(target, data) {
  gl.bindBuffer(target, gl.createBuffer());
  gl.bufferData(target, data, gl.STATIC_DRAW);
}

function makeMeshes() {
  const bytes = bytesOfMeshes();
  const places = scene.meshes.map(() => []);
  for (const place of scene.places)
    places[place[0]].push(place);
  let offset = 0;
  const take = size => bytes.subarray(offset, offset += size);
  return scene.meshes.map(([vertices, indices, hasNormals, low, size], number) => {
    const array = gl.createVertexArray();
    gl.bindVertexArray(array);
    fill(gl.ARRAY_BUFFER, take(8 * vertices));
    gl.enableVertexAttribArray(Place);
    gl.vertexAttribPointer(Place, 4, gl.UNSIGNED_SHORT, true, 8, 0);
    if (hasNormals) {
      fill(gl.ARRAY_BUFFER, take(4 * vertices));
      gl.enableVertexAttribArray(Normal);
      gl.vertexAttribPointer(Normal, 2, gl.SHORT, true, 4, 0);
    }
    const wide = vertices > 65536;
    fill(gl.ELEMENT_ARRAY_BUFFER, take(Math.ceil(indices * (wide ? 4 : 2) / 4) * 4));
    fill(gl.ARRAY_BUFFER, placesOf(low, places[number]));
    [AxisX, AxisY, AxisZ, Origin, Tint].forEach((attribute, i) => {
      gl.enableVertexAttribArray(attribute);
      gl.vertexAttribPointer(attribute, 3, gl.FLOAT, false, 60, 12 * i);
      gl.vertexAttribDivisor(attribute, 1);
    });
    return {array, indices, hasNormals, size: size.map(s => s / home.radius),
            type: wide ? gl.UNSIGNED_INT : gl.UNSIGNED_SHORT, count: places[number].length};
  }).filter(mesh => mesh.count > 0);
}

let program, meshes, uniforms;

function prepare() {
  program = compiled();
  uniforms = {};
  for (const name of ['size', 'target', 'view', 'scale', 'hasNormals'])
    uniforms[name] = gl.getUniformLocation(program, name);
  makePalette();
  meshes = makeMeshes();
}

// What is looked at, in the scaled scene.
const look = {};

function goHome() {
  Object.assign(look, {azimuth: home.azimuth, elevation: home.elevation, zoom: 1,
                       target: [0, 0, 0]});
}

function axes() {
  const [sa, ca] = [Math.sin(look.azimuth), Math.cos(look.azimuth)];
  const [se, ce] = [Math.sin(look.elevation), Math.cos(look.elevation)];
  return [[-sa, ca, 0], [-se * ca, -se * sa, ce], [ce * ca, ce * sa, se]];
}

// Pixels of the page for a unit of the scaled scene.
function pixelsPerUnit() {
  return Math.min(canvas.clientWidth / home.halfWidth, canvas.clientHeight / home.halfHeight) *
      home.radius / 2 / 1.06 * look.zoom;
}

function draw() {
  const dots = Math.min(window.devicePixelRatio || 1, 3);
  const width = Math.max(1, Math.round(canvas.clientWidth * dots));
  const height = Math.max(1, Math.round(canvas.clientHeight * dots));
  if (canvas.width !== width || canvas.height !== height) {
    canvas.width = width;
    canvas.height = height;
  }
  gl.viewport(0, 0, gl.drawingBufferWidth, gl.drawingBufferHeight);
  gl.clearColor(0, 0, 0, 0);
  gl.clear(gl.COLOR_BUFFER_BIT | gl.DEPTH_BUFFER_BIT);
  gl.enable(gl.DEPTH_TEST);
  gl.useProgram(program);
  const scale = 2 * pixelsPerUnit();
  const away = Math.hypot(...look.target);
  gl.uniform3f(uniforms.scale, scale / canvas.clientWidth, scale / canvas.clientHeight,
               -1 / (1.01 + away));
  gl.uniform3fv(uniforms.target, look.target);
  gl.uniform4fv(uniforms.view, axes().flatMap(axis => [...axis, 0]));
  for (const mesh of meshes) {
    gl.bindVertexArray(mesh.array);
    gl.uniform3fv(uniforms.size, mesh.size);
    gl.uniform1i(uniforms.hasNormals, mesh.hasNormals);
    gl.drawElementsInstanced(gl.TRIANGLES, mesh.indices, mesh.type, 0, mesh.count);
  }
}

let waiting = false;
function redraw() {
  if (waiting || gl.isContextLost())
    return;
  waiting = true;
  requestAnimationFrame(() => {
    waiting = false;
    draw();
  });
}

function turn(right, up) {
  look.azimuth -= right;
  look.elevation = Math.max(-Math.PI / 2, Math.min(Math.PI / 2, look.elevation + up));
}

function move(right, down) {
  const [x, y] = axes();
  const unit = 1 / pixelsPerUnit();
  look.target = look.target.map((t, i) =>
      Math.max(-2, Math.min(2, t - right * unit * x[i] + down * unit * y[i])));
}

// Zooms so that what is at a place of the canvas stays there.
function zoom(factor, x = canvas.clientWidth / 2, y = canvas.clientHeight / 2) {
  const before = look.zoom;
  look.zoom = Math.max(0.2, Math.min(200, before * factor));
  const kept = 1 - look.zoom / before;
  move((x - canvas.clientWidth / 2) * kept, (y - canvas.clientHeight / 2) * kept);
}

function listen() {
  const fingers = new Map();
  const middle = () => {
    const [a, b] = [...fingers.values()];
    return {x: (a.x + b.x) / 2, y: (a.y + b.y) / 2, apart: Math.hypot(a.x - b.x, a.y - b.y)};
  };
  canvas.addEventListener('pointerdown', event => {
    fingers.set(event.pointerId, {x: event.offsetX, y: event.offsetY});
    canvas.setPointerCapture(event.pointerId);
    canvas.classList.add('held');
  });
  canvas.addEventListener('pointermove', event => {
    const finger = fingers.get(event.pointerId);
    if (!finger)
      return;
    const [right, down] = [event.offsetX - finger.x, event.offsetY - finger.y];
    const before = fingers.size === 2 ? middle() : null;
    Object.assign(finger, {x: event.offsetX, y: event.offsetY});
    if (before) {
      const after = middle();
      move(after.x - before.x, after.y - before.y);
      if (before.apart > 0 && after.apart > 0)
        zoom(after.apart / before.apart, after.x, after.y);
    } else if (fingers.size === 1 && (event.shiftKey || (event.buttons & 6) !== 0)) {
      move(right, down);
    } else if (fingers.size === 1) {
      turn(right * 0.008, down * 0.008);
    }
    redraw();
  });
  for (const type of ['pointerup', 'pointercancel', 'lostpointercapture'])
    canvas.addEventListener(type, event => {
      fingers.delete(event.pointerId);
      canvas.classList.toggle('held', fingers.size > 0);
    });
  canvas.addEventListener('contextmenu', event => event.preventDefault());
  canvas.addEventListener('wheel', event => {
    event.preventDefault();
    const step = event.deltaMode === 0 ? 1 : event.deltaMode === 1 ? 30 : 300;
    const down = Math.max(-300, Math.min(300, event.deltaY * step));
    zoom(Math.exp(-down * 0.0016), event.offsetX, event.offsetY);
    redraw();
  }, {passive: false});
  canvas.addEventListener('dblclick', () => {
    goHome();
    redraw();
  });

  const arrows = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};
  canvas.addEventListener('keydown', event => {
    if (event.ctrlKey || event.altKey || event.metaKey)
      return;
    const arrow = arrows[event.key];
    if (arrow && event.shiftKey)
      move(40 * arrow[0], 40 * arrow[1]);
    else if (arrow)
      turn(0.12 * arrow[0], 0.12 * arrow[1]);
    else if (event.key === '+' || event.key === '=')
      zoom(1.25);
    else if (event.key === '-' || event.key === '_')
      zoom(0.8);
    else if (event.key === 'Home')
      goHome();
    else
      return;
    event.preventDefault();
    redraw();
  });
}

function show(isLive) {
  picture.classList.toggle('live', isLive);
  hint.hidden = !isLive;
}

// The pixels of the frame that was drawn last that show something.
function shownPixels() {
  const [width, height] = [gl.drawingBufferWidth, gl.drawingBufferHeight];
  const pixels = new Uint8Array(4 * width * height);
  gl.readPixels(0, 0, width, height, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
  let shown = 0;
  for (let i = 3; i < pixels.length; i += 4)
    shown += pixels[i] > 0;
  return shown;
}

// The still picture goes when there is another one to see.
function start() {
  try {
    prepare();
    show(true);
    draw();
    const shown = shownPixels();
    const error = gl.getError();
    if (shown === 0 || error !== 0)
      throw new Error(error !== 0 ? 'WebGL error ' + error : 'nothing was drawn');
    Object.assign(picture.dataset, {state: 'live', triangles: scene.triangles, pixels: shown});
  } catch (error) {
    show(false);
    picture.dataset.state = 'still: ' + error.message;
    return false;
  }
  return true;
}

canvas.tabIndex = 0;
canvas.setAttribute('role', 'application');
canvas.setAttribute('aria-label', document.getElementById('still').alt);
canvas.setAttribute('aria-describedby', hint.id);
canvas.addEventListener('webglcontextlost', event => {
  event.preventDefault();
  show(false);
  picture.dataset.state = 'still: the context is lost';
});
canvas.addEventListener('webglcontextrestored', start);
picture.append(canvas);
goHome();
if (start()) {
  listen();
  new ResizeObserver(redraw).observe(canvas);
  window.addEventListener('resize', redraw);
} else {
  canvas.remove();
}
})();
)script";

} // namespace keld::view

#endif
