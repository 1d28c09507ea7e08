// Judge: tedious, in every version of the protocol that it speaks.
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import { after, before, describe, test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';
import { password, startServer, user } from './server.mjs';

// The package is installed into the build folder, not beside this file.
const require = createRequire(process.env.MAGDB_JUDGES + '/package.json');
const { Connection, Request, TYPES } = require('tedious');

let server;
const open = [];

function connect(options = {}, login = {}) {
  return new Promise((resolve, reject) => {
    const connection = new Connection({
      server: '127.0.0.1',
      authentication: { type: 'default', options: { userName: user, password, ...login } },
      options: { port: server.port, encrypt: false, database: 'MAGAZYN', rowCollectionOnRequestCompletion: false, ...options },
    });
    connection.messages = [];
    connection.on('infoMessage', message => connection.messages.push(message.message));
    connection.on('error', () => {});
    open.push(connection);
    connection.connect(error => error ? reject(error) : resolve(connection));
  });
}

// how: execSql (a call of sp_executesql), execSqlBatch or callProcedure.
function run(connection, how, text, prepare = () => {}) {
  return new Promise((resolve, reject) => {
    const result = { sets: [], columns: [], outputs: {}, ends: [], status: undefined };
    const request = new Request(text, (error, count) => error ? reject(error) : resolve({ ...result, count }));
    request.on('columnMetadata', columns => {
      result.columns.push(columns.map(column => column.colName));
      result.sets.push([]);
    });
    request.on('row', row => result.sets.at(-1).push(row.map(cell => cell.value)));
    request.on('returnValue', (name, value) => { result.outputs[name] = value; });
    request.on('done', () => result.ends.push('statement'));
    request.on('doneProc', (count, more, status) => {
      result.ends.push(`procedure ${status}`);
      result.status = status;
    });
    prepare(request);
    connection[how](request);
  });
}

const batch = (connection, text) => run(connection, 'execSqlBatch', text);
const step = (connection, action, ...args) => new Promise((resolve, reject) =>
  connection[action](error => error ? reject(error) : resolve(), ...args));

before(async () => { server = await startServer(); });
after(async () => {
  open.forEach(connection => connection.close());
  assert.equal(await server.stop(), 0);
});

for (const tdsVersion of ['7_1', '7_2', '7_3_A', '7_3_B', '7_4']) {
  describe(`TDS ${tdsVersion}`, () => {
    let connection;
    before(async () => { connection = await connect({ tdsVersion }); });

    test('every type has its value', async () => {
      const { sets, columns } = await batch(connection, 'select * from dbo.Typy order by Id');
      assert.deepEqual(columns[0], ['Id', 'B', 'TI', 'SI', 'I', 'BI', 'M', 'D', 'R', 'F', 'DT', 'DA', 'G', 'VB', 'C',
        'VC', 'NC', 'NV', 'VM', 'NM', 'BM']);
      const date = tdsVersion >= '7_3' ? new Date(Date.UTC(2024, 1, 29)) : '2024-02-29';
      assert.deepEqual(sets[0][0], [1, true, 255, -32768, -2147483648, '9223372036854775807', -12.3456,
        12345678901234.5678, 1.5, -2.25, new Date(Date.UTC(2024, 1, 29, 13, 45, 30, 123)), date,
        '6F9619FF-8B86-D011-B42D-00C04FC964FF', Buffer.from([0, 1, 255]), 'gęś  ', 'zażółć gęślą jaźń', 'ńó   ',
        'ZAŻÓŁĆ GĘŚLĄ JAŹŃ', 'długi łańcuch', 'długi łańcuch', Buffer.from([0xAB, 0xCD])]);
    });

    test('NULL of every type', async () => {
      const { sets } = await batch(connection, 'select * from dbo.Typy where Id = 2');
      assert.deepEqual(sets[0], [[2, ...Array(20).fill(null)]]);
    });

    test('parameters of every type come back as they went', async () => {
      const values = {
        bi: [TYPES.BigInt, '-9223372036854775808'], b: [TYPES.Bit, true], ti: [TYPES.TinyInt, 200],
        si: [TYPES.SmallInt, -5], i: [TYPES.Int, 2147483647], m: [TYPES.Money, 922.3372],
        d: [TYPES.Decimal, -1234.5678, { precision: 18, scale: 4 }], r: [TYPES.Real, 0.25],
        f: [TYPES.Float, 1e-300], dt: [TYPES.DateTime, new Date(Date.UTC(1999, 11, 31, 23, 59, 59, 997))],
        g: [TYPES.UniqueIdentifier, '01234567-89AB-CDEF-0123-456789ABCDEF'],
        vb: [TYPES.VarBinary, Buffer.from([9, 8, 0])], vc: [TYPES.VarChar, 'Żółw i gęś'],
        nv: [TYPES.NVarChar, 'łódź 🙂'], nm: [TYPES.NVarChar, 'ą'.repeat(5000)],
        vm: [TYPES.VarChar, 'ę'.repeat(9000)], bm: [TYPES.VarBinary, Buffer.alloc(9000, 7)],
        ...(tdsVersion >= '7_3' ? { da: [TYPES.Date, new Date(Date.UTC(1, 0, 1))] } : {}),
      };
      const names = Object.keys(values);
      // The year 1 has to be set aside: Date.UTC takes it for 1901.
      values.da?.[1].setUTCFullYear(1);
      const { sets } = await run(connection, 'execSql', `select ${names.map(name => '@' + name).join(', ')}`,
        request => names.forEach(name => request.addParameter(name, ...values[name])));
      assert.deepEqual(sets[0][0], names.map(name => values[name][1]));
      const nulls = await run(connection, 'execSql', `select ${names.map(name => '@' + name).join(', ')}`,
        request => names.forEach(name => request.addParameter(name, values[name][0], null, values[name][2])));
      assert.deepEqual(nulls.sets[0][0], names.map(() => null));
    });

    test('a procedure gives rows, return value and outputs', async () => {
      const result = await run(connection, 'callProcedure', 'dbo.Przyjmij', request => {
        request.addParameter('nazwa', TYPES.NVarChar, 'Śruba');
        request.addParameter('ile', TYPES.Int, 21);
        request.addOutputParameter('podwojone', TYPES.Int);
        request.addOutputParameter('opis', TYPES.NVarChar, null, { length: 100 });
      });
      assert.deepEqual(result.sets, [[['Śruba', 21]]]);
      assert.equal(result.status, 3);
      assert.deepEqual(result.outputs, { podwojone: 42, opis: 'Przyjęto: Śruba' });
    });

    test('every EXEC of a batch tells its return value, those inside a procedure do not', async () => {
      const call = "exec dbo.Przyjmij N'x', 1, null, null";
      const { sets, ends } = await batch(connection, `${call}; exec dbo.Nadrzedna; select 5 as a`);
      assert.deepEqual(sets, [[['x', 1]], [['x', 1]], [[5]]]);
      assert.deepEqual(ends, ['procedure 3', 'procedure 8', 'statement']);
      const text = await run(connection, 'execSql', call);
      assert.deepEqual(text.sets, [[['x', 1]]]);
      assert.deepEqual(text.ends, ['procedure 0']);
    });

    test('a left out parameter has its default, a missing one is an error', async () => {
      const result = await run(connection, 'callProcedure', 'dbo.Przyjmij', request => {
        request.addParameter('nazwa', TYPES.NVarChar, 'x');
        request.addOutputParameter('podwojone', TYPES.Int);
        request.addOutputParameter('opis', TYPES.NVarChar, null, { length: 100 });
      });
      assert.equal(result.outputs.podwojone, 8);
      await assert.rejects(run(connection, 'callProcedure', 'dbo.Przyjmij'), { number: 201 });
    });

    test('several sets and PRINT between them', async () => {
      connection.messages.length = 0;
      const { sets } = await run(connection, 'callProcedure', 'dbo.DwaZbiory');
      assert.deepEqual(sets, [[[0], [1]], [['żuk']]]);
      assert.deepEqual(connection.messages, ['pomiędzy']);
      const both = await batch(connection, "select 1 as a; select 'b' as b, 2 as c");
      assert.deepEqual(both.sets, [[[1]], [['b', 2]]]);
      assert.deepEqual(both.columns, [['a'], ['b', 'c']]);
    });

    test('counts of changed rows', async () => {
      assert.equal((await batch(connection, 'update dbo.Cyfry set n = n where n < 4')).count, 4);
      assert.equal((await batch(connection, 'set nocount on; update dbo.Cyfry set n = n where n < 4')).count, 0);
      await batch(connection, 'set nocount off');
    });

    test('errors carry number, line and text', async () => {
      await assert.rejects(batch(connection, 'select 1\n\nselect * from dbo.Niema'),
        { number: 208, class: 16, state: 1, lineNumber: 3, message: "Invalid object name 'dbo.Niema'." });
      await assert.rejects(batch(connection, 'select (1'), { number: 102 });
      await assert.rejects(batch(connection, 'select Brak from dbo.Stan'), { number: 207 });
      await assert.rejects(batch(connection, 'select 1 / 0'), { number: 8134 });
      await assert.rejects(batch(connection, 'insert into dbo.Stan (Id, Ilosc) values (1, 1)'), { number: 2627 });
      await assert.rejects(batch(connection, 'insert into dbo.Stan (Id) values (5)'), { number: 515 });
      await assert.rejects(run(connection, 'callProcedure', 'dbo.Nieznana'), { number: 2812 });
    });

    test('an error raised in a procedure', async () => {
      await assert.rejects(run(connection, 'callProcedure', 'dbo.Odmowa'),
        { number: 50000, message: 'Za mało miejsca w gnieździe', procName: /Odmowa$/ });
      await batch(connection, 'update dbo.Stan set Ilosc = 10');
    });

    test('a hundred thousand rows', async () => {
      const { sets } = await batch(connection, `select a.n + 10 * b.n + 100 * c.n + 1000 * d.n + 10000 * e.n as n,
        N'wiersz ł' as t from dbo.Cyfry a cross join dbo.Cyfry b cross join dbo.Cyfry c cross join dbo.Cyfry d
        cross join dbo.Cyfry e`);
      assert.equal(sets[0].length, 100_000);
      assert.equal(new Set(sets[0].map(row => row[0])).size, 100_000);
      assert.ok(sets[0].every(row => row[1] === 'wiersz ł'));
    });

    test('a cancelled batch ends at once and leaves no trace', async () => {
      const started = Date.now();
      const cancelled = assert.rejects(run(connection, 'callProcedure', 'dbo.BezKonca'), { code: 'ECANCEL' });
      await sleep(200);
      connection.cancel();
      await cancelled;
      assert.ok(Date.now() - started < 5000);
      assert.deepEqual((await batch(connection, 'select Ilosc from dbo.Stan')).sets, [[[10]]]);
    });

    test('a request that takes too long is given up', async () => {
      await assert.rejects(run(connection, 'execSqlBatch', 'declare @i int; set @i = 0; while 1 = 1 set @i = 1',
        request => request.setTimeout(200)), { code: 'ETIMEOUT' });
      assert.deepEqual((await batch(connection, 'select 5')).sets, [[[5]]]);
    });

    test('transactions', async () => {
      await step(connection, 'beginTransaction');
      await batch(connection, 'update dbo.Stan set Ilosc = 77');
      await step(connection, 'rollbackTransaction');
      assert.deepEqual((await batch(connection, 'select Ilosc from dbo.Stan')).sets, [[[10]]]);
      await step(connection, 'beginTransaction', 'nazwana');
      await batch(connection, 'update dbo.Stan set Ilosc = 11');
      await step(connection, 'commitTransaction', 'nazwana');
      assert.deepEqual((await batch(connection, 'select Ilosc from dbo.Stan')).sets, [[[11]]]);
      await batch(connection, 'update dbo.Stan set Ilosc = 10');
    });

    test('prepared statements', async () => {
      const rows = [];
      const request = new Request('select @a + 1', error => request.done?.(error));
      request.addParameter('a', TYPES.Int);
      request.on('row', row => rows.push(row[0].value));
      await new Promise((resolve, reject) => {
        request.on('prepared', resolve);
        request.done = error => error && reject(error);
        connection.prepare(request);
      });
      for (const a of [1, 41]) {
        await new Promise((resolve, reject) => {
          request.done = error => error ? reject(error) : resolve();
          connection.execute(request, { a });
        });
      }
      assert.deepEqual(rows, [2, 42]);
      await new Promise((resolve, reject) => {
        request.done = error => error ? reject(error) : resolve();
        connection.unprepare(request);
      });
    });

    test('a reset drops temporary tables', async () => {
      await batch(connection, 'create table #t (a int)');
      await batch(connection, 'select a from #t');
      await step(connection, 'reset');
      await assert.rejects(batch(connection, 'select a from #t'), { number: 208 });
    });
  });
}

test('a wrong password', async () => {
  await assert.rejects(connect({}, { password: 'zgadnij' }), { code: 'ELOGIN', message: "Login failed for user 'regalon'." });
});

test('an unknown database', async () => {
  await assert.rejects(connect({ database: 'NIEMA' }), { code: 'ELOGIN', message: /NIEMA/ });
});

test('a client that asks for encryption learns that there is none', async () => {
  const connection = await connect({ encrypt: true, trustServerCertificate: true });
  assert.deepEqual((await batch(connection, 'select 1')).sets, [[[1]]]);
});

test('small and large packets', async () => {
  for (const packetSize of [512, 4096, 16384]) {
    const connection = await connect({ packetSize });
    const text = 'ż'.repeat(20_000);
    assert.deepEqual((await batch(connection, `select N'${text}' as t`)).sets, [[[text]]]);
  }
});

test('two sessions at once', async () => {
  const [one, two] = await Promise.all([connect(), connect()]);
  const ids = await Promise.all([one, two].map(async each => (await batch(each, 'select @@SPID')).sets[0][0][0]));
  assert.notEqual(ids[0], ids[1]);
  await batch(one, 'create table #mine (a int)');
  await assert.rejects(batch(two, 'select a from #mine'), { number: 208 });
  await Promise.all([one, two].map(async each => {
    for (let i = 0; i < 50; ++i) {
      await batch(each, 'update dbo.Stan set Ilosc = Ilosc + 1');
    }
  }));
  assert.deepEqual((await batch(one, 'select Ilosc from dbo.Stan')).sets, [[[110]]]);
});

test('the name of the work station reaches the session', async () => {
  const connection = await connect({ workstationId: 'STANOWISKO-7' });
  assert.deepEqual((await batch(connection, 'select host_name() as h')).sets, [[['STANOWISKO-7']]]);
});
