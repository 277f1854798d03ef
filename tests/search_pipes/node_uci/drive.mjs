// The standard UCI mode driven by node-uci (pinned in package.json), as a Node.js program drives
// an engine it starts by its bare path: the handshake and options, an analysis with goInfinite
// then stop, a timed go, and a mate reported as a mate. Usage: node drive.mjs ENGINE
import { Engine } from 'node-uci'

const fail = (message) => {
  console.error('FAILED: ' + message)
  process.exit(1)
}
const within = (promise, ms, what) =>
  Promise.race([promise, new Promise((_, reject) =>
    setTimeout(() => reject(new Error(`${what}: no answer within ${ms} ms`)), ms))])
const sleep = (ms) => new Promise((done) => setTimeout(done, ms))

const engine = new Engine(process.argv[2])
await within(engine.init(), 10000, 'init')
if (engine.id.name !== 'Korvane 1.0') fail('id name ' + engine.id.name)
for (const option of ['Hash', 'Clear Hash', 'MultiPV'])
  if (!engine.options.has(option)) fail('no option ' + option + ': ' + [...engine.options.keys()])
await engine.setoption('Hash', '16')
await engine.setoption('MultiPV', '3')
await within(engine.isready(), 5000, 'isready')

// An analysis of a middlegame runs until it is stopped, three lines an iteration.
await engine.position('r1b2rk1/2q1b1pp/p2ppn2/1p6/3QP3/1BN1B3/PPP3PP/R4RK1 w - - 0 1')
const analysis = engine.goInfinite()
const lines = []
let early = null
analysis.on('data', (data) => (data.bestmove ? (early = data) : lines.push(data)))
await sleep(1500)
if (early) fail('bestmove before stop: ' + JSON.stringify(early))
const stopped = await within(engine.stop(), 2000, 'stop')
if (!/^[a-h][1-8][a-h][1-8][qrbn]?$/.test(stopped.bestmove)) fail('bestmove ' + stopped.bestmove)
const deepest = Math.max(...lines.map((info) => info.depth))
const last = lines.filter((info) => info.depth === deepest - 1)
if (deepest < 4 || last.map((info) => info.multipv).join() !== '1,2,3')
  fail('analysis lines ' + JSON.stringify(lines.slice(-6)))

// A timed search, then a mate in one reported as a mate.
await engine.setoption('MultiPV', '1')
await engine.position('rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1', ['e2e4'])
const timed = await within(engine.go({ movetime: 300 }), 3000, 'go movetime 300')
if (!timed.bestmove || timed.info.length === 0) fail('timed go ' + JSON.stringify(timed))
await engine.position('6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1')
const mate = await within(engine.go({ depth: 3 }), 3000, 'go depth 3')
const score = mate.info[mate.info.length - 1].score
if (mate.bestmove !== 'a1a8' || score.unit !== 'mate' || score.value !== 1)
  fail('mate ' + JSON.stringify(mate))
await engine.quit()
console.log('ok node-uci: analysis to depth ' + deepest + ', bestmove ' + stopped.bestmove)
