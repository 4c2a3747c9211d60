// Draws the labels of a stream by somebody else's reader of the command language.
//
//   node draw.js MODULES STREAM WIDTH HEIGHT PREFIX   writes PREFIX-1.png, PREFIX-2.png, ...
//
// MODULES is the folder that the packages are installed in; the size of the paper is in dots.
'use strict';

const fs = require('node:fs');
const path = require('node:path');

globalThis.crypto ??= require('node:crypto').webcrypto;  // not global before Node.js 20

async function draw([modules, stream, width, height, prefix]) {
  const {ready} = require(path.join(modules, 'zpl-renderer-js'));
  const {api} = await ready;
  const dotsPerMillimetre = 8;
  const labels = await api.zplToBase64MultipleAsync(
      fs.readFileSync(stream, 'latin1'), width / dotsPerMillimetre, height / dotsPerMillimetre,
      dotsPerMillimetre);
  labels.forEach((label, i) => {
    fs.writeFileSync(`${prefix}-${i + 1}.png`, Buffer.from(label, 'base64'));
  });
}

draw(process.argv.slice(2)).then(() => process.exit(0), (error) => {
  console.error(`draw.js: ${error.message}`);
  process.exit(1);
});
