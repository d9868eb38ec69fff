// Reads one JSON-encoded GraphQL query per line and answers one line each:
// "valid", or the validation errors against GitHub's schema joined by " | ".
const fs = require('fs');
const readline = require('readline');
const { buildSchema, parse, validate } = require('graphql');

// GitHub's published schema repeats two fields; the rest is checked as usual.
const schema = buildSchema(fs.readFileSync(process.argv[2], 'utf8'), { assumeValidSDL: true });
readline.createInterface({ input: process.stdin }).on('line', (line) => {
  let answer;
  try {
    const errors = validate(schema, parse(JSON.parse(line)));
    answer = errors.length ? errors.map((e) => e.message).join(' | ') : 'valid';
  } catch (e) {
    answer = String(e.message).split('\n')[0];
  }
  process.stdout.write(answer + '\n');
});
