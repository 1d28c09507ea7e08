// Judge: tsql of FreeTDS.
import assert from 'node:assert/strict';
import { after, before, describe, test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';
import { password, runClient, startClient, startServer, user } from './server.mjs';

let server;
before(async () => { server = await startServer(); });
after(async () => assert.equal(await server.stop(), 0));

// -o q leaves out everything but results and messages, -o f only the counts; columns stand apart by tabs.
function tsqlArguments(options = {}) {
  return ['-H', '127.0.0.1', '-p', String(server.port), '-U', user, '-P', options.password ?? password,
    '-D', options.database ?? 'MAGAZYN', '-o', options.output ?? 'q', '-t', '\t'];
}

function tsql(script, options = {}) {
  return runClient('tsql', tsqlArguments(options), script + '\ngo\nquit\n', { TDSVER: options.version ?? 'auto' });
}

for (const version of ['7.1', '7.2', '7.3', '7.4']) {
  describe(`TDS ${version}`, () => {
    test('every type has its value', () => {
      const { text } = tsql('select Id, B, TI, SI, I, BI, M, D, R, F, VB, C, VC, NC, NV, VM, NM, BM, G from dbo.Typy where Id = 1',
        { version });
      assert.ok(text.includes(['1', '1', '255', '-32768', '-2147483648', '9223372036854775807', '-12.3456',
        '12345678901234.5678', '1.5', '-2.25', '0001ff', 'gęś  ', 'zażółć gęślą jaźń', 'ńó   ', 'ZAŻÓŁĆ GĘŚLĄ JAŹŃ',
        'długi łańcuch', 'długi łańcuch', 'abcd', '6F9619FF-8B86-D011-B42D-00C04FC964FF'].join('\t')), text);
    });
    test('dates', () => {
      const { text } = tsql('select DT, DA from dbo.Typy where Id = 1', { version });
      // Before 7.3 a date travels as text.
      assert.match(text, version >= '7.3' ? /Feb 29 2024 0?1:45PM\tFeb 29 2024/ : /Feb 29 2024 0?1:45PM\t2024-02-29/);
    });
    test('NULL of every type', () => {
      assert.ok(tsql('select * from dbo.Typy where Id = 2', { version }).text.includes(['2', ...Array(20).fill('NULL')].join('\t')));
    });
  });
}

test('a wrong password', () => {
  const { all, code } = tsql('select 1', { password: 'zgadnij' });
  assert.match(all, /Msg 18456 \(severity 14, state 1\)/);
  assert.match(all, /Login failed for user 'regalon'\./);
  assert.notEqual(code, 0);
});

test('an unknown database', () => {
  assert.match(tsql('select 1', { database: 'NIEMA' }).all, /Msg (4060|911) /);
});

test('a procedure in a batch gives rows, output and return value', () => {
  const { all } = tsql(`declare @p int, @o nvarchar(100), @r int
exec @r = dbo.Przyjmij N'Śruba', 21, @p output, @o output
select @r, @p, @o`);
  assert.match(all, /Śruba\t21/);
  assert.match(all, /3\t42\tPrzyjęto: Śruba/);
});

test('every EXEC of a batch tells its return value', () => {
  const { all } = tsql("exec dbo.Przyjmij N'x', 1, null, null\nexec dbo.Nadrzedna\nselect 5 as a", { output: 'f' });
  assert.deepEqual(all.match(/return status = \d+/g), ['return status = 3', 'return status = 8']);
  assert.match(all, /^a\n5$/m);
});

test('several sets and PRINT', () => {
  const { text, errors } = tsql('exec dbo.DwaZbiory');
  assert.match(text, /^n\n0\n1\n/m);
  assert.match(text, /Nazwa\nżuk/);
  assert.match(errors + text, /pomiędzy/);
});

test('errors carry number, severity and line', () => {
  const { all } = tsql('select 1\n\nselect * from dbo.Niema');
  assert.match(all, /Msg 208 \(severity 16, state 1\) from \S+ Line 3:\s+"Invalid object name 'dbo\.Niema'\."/);
  assert.match(tsql('exec dbo.Odmowa').all, /Msg 50000 \(severity 16, state 1\)[^]*Za mało miejsca w gnieździe/);
  tsql('update dbo.Stan set Ilosc = 10');
  assert.match(tsql('exec dbo.Nieznana').all, /Msg 2812 /);
});

test('a batch after a failed one is answered', () => {
  assert.match(tsql('select * from dbo.Niema\ngo\nselect 41 + 1').text, /^42$/m);
});

test('a hundred thousand rows', () => {
  const { text } = tsql(`select a.n + 10 * b.n + 100 * c.n + 1000 * d.n + 10000 * e.n as wiersz from dbo.Cyfry a
    cross join dbo.Cyfry b cross join dbo.Cyfry c cross join dbo.Cyfry d cross join dbo.Cyfry e`);
  const numbers = text.split('\n').filter(line => /^\d+$/.test(line));
  assert.equal(new Set(numbers).size, 100_000);
});

test('two sessions at once', async () => {
  const sessions = [1, 2].map(() => startClient('tsql', tsqlArguments()));
  for (let i = 0; i < 20; ++i) {
    sessions.forEach(({ child }) => child.stdin.write('update dbo.Stan set Ilosc = Ilosc + 1\ngo\n'));
  }
  sessions.forEach(({ child }) => child.stdin.write('select @@SPID as spid\ngo\nquit\n'));
  const spids = (await Promise.all(sessions.map(session => session.ended))).map(text => text.match(/^spid\n(\d+)$/m)[1]);
  assert.notEqual(spids[0], spids[1]);
  assert.match(tsql('select Ilosc from dbo.Stan').text, /^50$/m);
});

test('a client killed inside a procedure leaves no trace', async () => {
  const { child, ended } = startClient('tsql', tsqlArguments());
  child.stdin.write('exec dbo.BezKonca\ngo\n');
  await server.received('exec dbo.BezKonca');
  await sleep(200);
  child.kill('SIGKILL');
  await ended;
  assert.match(tsql('update dbo.Stan set Ilosc = Ilosc + 1\nselect Ilosc from dbo.Stan').text, /^51$/m);
});
