// Judge: isql of unixODBC through the ODBC driver of FreeTDS.
import assert from 'node:assert/strict';
import { after, before, describe, test } from 'node:test';
import { existsSync, mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { spawnSync } from 'node:child_process';
import { password, runClient, startClient, startServer, user } from './server.mjs';

let server;
let folder;

function driver() {
  const architecture = spawnSync('uname', ['-m'], { encoding: 'utf8' }).stdout.trim();
  const places = [`/usr/lib/${architecture}-linux-gnu/odbc/libtdsodbc.so`, '/usr/lib/odbc/libtdsodbc.so'];
  return places.find(existsSync) ?? 'libtdsodbc.so';
}

before(async () => {
  server = await startServer();
  folder = join(server.folder, 'odbc');
  mkdirSync(folder);
  writeFileSync(join(folder, 'odbcinst.ini'), `[FreeTDS]\nDriver = ${driver()}\n`);
});
after(async () => assert.equal(await server.stop(), 0));

function connectionString(options = {}) {
  return ['Driver=FreeTDS', 'Server=127.0.0.1', `Port=${server.port}`, `UID=${user}`,
    `PWD=${options.password ?? password}`, `Database=${options.database ?? 'MAGAZYN'}`,
    `TDS_Version=${options.version ?? '7.4'}`, 'ClientCharset=UTF-8'].join(';');
}

function environment() {
  return { ODBCSYSINI: folder, ODBCINI: join(folder, 'odbc.ini') };
}

// Columns stand apart by "|", or make a table with counts below. isql prepares and executes each line.
function isql(script, options = {}) {
  const form = options.table ? [] : ['-d|'];
  return runClient('isql', ['-v', '-b', ...form, '-k', connectionString(options)], script + '\n', environment());
}

for (const version of ['7.1', '7.2', '7.3', '7.4']) {
  describe(`TDS ${version}`, () => {
    test('every type has its value', () => {
      const { text } = isql('select Id, B, TI, SI, I, BI, M, D, R, F, DT, DA, G, VB, C, VC, NC, NV from dbo.Typy where Id = 1',
        { version });
      assert.match(text, new RegExp(['1', '1', '255', '-32768', '-2147483648', '9223372036854775807', '-12\\.3456',
        '12345678901234\\.5678', '1\\.5', '-2\\.25', '2024-02-29 13:45:30\\.123', '2024-02-29',
        '6F9619FF-8B86-D011-B42D-00C04FC964FF', '0001FF', 'gęś  ', 'zażółć gęślą jaźń', 'ńó   ', 'ZAŻÓŁĆ GĘŚLĄ JAŹŃ',
      ].join('\\|'), 'i'));
    });
    test('texts without a limit', () => {
      assert.match(isql('select VM, NM from dbo.Typy where Id = 1', { version }).text, /długi łańcuch\|długi łańcuch/);
    });
    test('NULL of every type', () => {
      assert.match(isql('select Id, B, TI, SI, I, BI, M, D, R, F, DT, DA, G, VB, C, VC, NC, NV from dbo.Typy where Id = 2', { version }).text,
        /^2\|{17}$/m);
    });
    test('a procedure gives its rows', () => {
      assert.match(isql('exec dbo.DwaZbiory', { version }).text, /^0$\n^1$/m);
    });
  });
}

test('a wrong password', () => {
  const { all, code } = isql('select 1', { password: 'zgadnij' });
  assert.match(all, /Login failed for user 'regalon'/);
  assert.notEqual(code, 0);
});

test('an unknown database', () => {
  assert.match(isql('select 1', { database: 'NIEMA' }).all, /NIEMA/);
});

test('errors carry state and text, and the session goes on', () => {
  const { all } = isql('select * from dbo.Niema\nselect Brak from dbo.Stan\nselect 1 / 0\nexec dbo.Odmowa\n' +
    'update dbo.Stan set Ilosc = 10\nselect 6 * 7');
  assert.match(all, /S0002[^]*Invalid object name 'dbo\.Niema'/);
  assert.match(all, /Invalid column name 'Brak'/);
  assert.match(all, /Divide by zero/);
  assert.match(all, /Za mało miejsca w gnieździe/);
  assert.match(all, /^42$/m);
});

test('counts of changed rows', () => {
  assert.match(isql('update dbo.Cyfry set n = n where n < 4', { table: true }).text, /SQLRowCount returns 4/);
});

test('return value and output parameters', () => {
  const line = "declare @p int, @o nvarchar(100), @r int; exec @r = dbo.Przyjmij N'Śruba', 21, @p output, @o output; " +
    'select @r as r, @p as p, @o as o into #w; select r, p, o from #w';
  // The row of the procedure, then what it gave back: its return value and both output parameters.
  assert.equal(isql(line).text.trim(), 'Śruba|21\n3|42|Przyjęto: Śruba');
});

test('a hundred thousand rows', () => {
  const { text } = isql('select a.n + 10 * b.n + 100 * c.n + 1000 * d.n + 10000 * e.n as wiersz from dbo.Cyfry a ' +
    'cross join dbo.Cyfry b cross join dbo.Cyfry c cross join dbo.Cyfry d cross join dbo.Cyfry e');
  const numbers = text.split('\n').filter(line => /^\d+$/.test(line));
  assert.equal(new Set(numbers).size, 100_000);
});

test('two sessions at once', async () => {
  const arguments_ = ['-v', '-b', '-d|', '-k', connectionString()];
  const sessions = [1, 2].map(() => startClient('isql', arguments_, environment()));
  sessions.forEach(({ child }) => child.stdin.end('update dbo.Stan set Ilosc = Ilosc + 1\n'.repeat(20) + 'select @@SPID\n'));
  const [one, two] = await Promise.all(sessions.map(session => session.ended));
  assert.match(one, /^\d+$/m);
  assert.notEqual(one, two);
  assert.match(isql('select Ilosc from dbo.Stan').text, /^50$/m);
});

test('a temporary table ends with the prepared statement that made it', () => {
  const { text, all } = isql('create table #mine (a int); insert into #mine (a) values (5); select a from #mine\nselect a from #mine');
  assert.match(text, /^5$/m);
  assert.match(all, /Invalid object name '#mine'/);
});
