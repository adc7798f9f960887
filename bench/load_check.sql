-- What bench/load.sh asks the register when the workstations have gone home. Run where their lines lie, a file a kind
-- (working_day.h), each with the number of clients in front. Prints the faults, none if all is well.
\set ON_ERROR_STOP on
\pset format unaligned
\pset tuples_only on
\pset fieldsep ' '
set client_min_messages = warning;

create temp table sample (clients int, what text, took float, undisturbed int);
create temp table lost (clients int);
create temp table payment (clients int, pers_no text, val_year text, amount bigint, outcome text, ended int);
create temp table look (clients int, pers_no text, val_year text, amount bigint, seen text);
create temp table change (clients int, pers_no text, serial int, pers_add text, outcome text);
create temp table member (clients int, pers_no text, outcome text);
create temp table failure (clients int, what text, about text);
\copy sample from 'sample'
\copy lost from 'lost'
\copy payment from 'payment'
\copy look from 'look'
\copy change from 'change'
\copy member from 'member'
\copy failure from 'failure'
analyze sample, lost, payment, look, change, member;

create temp table counted as
    select p.pers_no, p.val_year, p.amount, p.outcome, (select count(*) from dues_b_tbl b
        where b.pers_no = p.pers_no and b.val_year = p.val_year and b.pres_money = p.amount
            and b.pres_let_day = '20260131') as lines
    from payment p;
create temp table last_payment as
    select distinct on (pers_no, val_year) * from payment order by pers_no, val_year, amount desc;
create temp table last_change as
    select distinct on (pers_no) * from change order by pers_no, serial desc;

create temp table fault as
    select 'stored, but not there once: payment' as what, pers_no, val_year, amount::text as about from counted
        where outcome = 'stored' and lines <> 1
    union all select 'failed, but there: payment', pers_no, val_year, amount::text from counted
        where outcome = 'failed' and lines <> 0
    union all select 'of unknown outcome, and there twice: payment', pers_no, val_year, amount::text from counted
        where outcome = 'unknown' and lines > 1
    union all select 'looked for, and now otherwise: payment', pers_no, val_year, amount::text
        from look join counted using (pers_no, val_year, amount)
        where lines <> case seen when 'there' then 1 else 0 end
    union all select 'entered by nobody: payment', pers_no, val_year, pres_money::text from dues_b_tbl b
        where pres_let_day = '20260131' and not exists (select from payment p
            where b.pers_no = p.pers_no and b.val_year = p.val_year and b.pres_money = p.amount)
    union all select 'not settled: header', p.pers_no, p.val_year, h.yet_money || ' ' || h.incom_flag
        from last_payment p left join dues_h_tbl h using (pers_no, val_year)
        cross join lateral (select trunc(h.mem_dues) - coalesce(sum(pres_money), 0) as balance from dues_b_tbl b
            where b.pers_no = p.pers_no and b.val_year = p.val_year) as lines
        where p.ended = 1 and (h.yet_money is distinct from balance
            or h.incom_flag is distinct from case when balance <= 0 then '1' else '0' end)
    union all select 'stored, but not there: change', c.pers_no, '', c.pers_add
        from last_change c left join person_m_tbl m using (pers_no)
        where c.outcome = 'stored' and m.pers_add is distinct from c.pers_add
    union all select 'stored, but not whole: member', pers_no, '', '' from member m
        where outcome = 'stored' and (select count(*) from person_m_tbl t where t.pers_no = m.pers_no)
            * (select count(*) from contract t where t.pers_no = m.pers_no)
            * (select count(*) from company t where t.pers_no = m.pers_no) <> 1
    union all select 'failure', '', what, about from failure
    union all select 'fewer than met the fall of the server or stored a payment: clients', '', '', clients::text
        from (select distinct clients from sample) as days
        where clients > (select count(*) from lost l where l.clients = days.clients)
            or clients > (select count(*) from payment p where p.clients = days.clients and outcome = 'stored');

\o faults
select * from fault;
\o
create temp table save as select * from sample where what not in ('search', 'opening');
create temp view times as
    select clients, what, round(t[1]) || ' ms | ' || round(t[2]) || ' ms' as pair, t[2] as high
    from (select clients, 'save' as what, percentile_cont(array[0.5, 0.95]) within group (order by took) as t
            from save group by clients
        union all select clients, what, percentile_cont(array[0.5, 0.95]) within group (order by took)
            from sample where what in ('search', 'opening') group by clients, what) as sorted;

\o table
select '| clients | saves | a save: median | 95 % | a search: median | 95 % | an opening: median | 95 % | lines lost |';
select '|---|---|---|---|---|---|---|---|---|';
select format('| %s | %s | %s | %s | %s | %s |', clients, count(*),
    (select pair from times t where t.clients = s.clients and what = 'save'),
    (select pair from times t where t.clients = s.clients and what = 'search'),
    (select pair from times t where t.clients = s.clients and what = 'opening'),
    (select count(*) from lost l where l.clients = s.clients))
from save s group by clients order by clients;
select '';
select format('- %s clients: payments stored %s, of unknown outcome %s (%s of them there), failed %s; the fall met '
    '%s saves, which took up to %s ms; headers left unsettled by a broken save: %s', clients,
    count(*) filter (where outcome = 'stored'), count(*) filter (where outcome = 'unknown'),
    (select count(*) from look l where l.clients = p.clients and seen = 'there'),
    count(*) filter (where outcome = 'failed'),
    (select count(*) from save s where s.clients = p.clients and undisturbed = 0),
    (select coalesce(round(max(took)), 0) from save s where s.clients = p.clients and undisturbed = 0),
    (select count(*) from last_payment l where l.clients = p.clients and ended = 0 and outcome <> 'failed'))
from payment p group by clients order by clients;
\o
\o slowest
select coalesce(max(high), 0)::int from times where clients >= 50 and what = 'save';
\o
