-- Divides YDouble values in multiplier form; their hidden ones are taken for granted. At the IEEE output the quotient
-- is rounded to the nearest, to even between two (roundconvert 1), or truncated (0); in divider form (divoutput, which
-- is the multiplier form) it is rounded to its 53 bits, in adder form (xoutput) it has 55 bits and a 56th that is 1
-- where it is not exact. What comes below the smallest exponent is zero, what is too large is infinite. 0 / 0 and
-- inf / inf are nan, x / 0 and inf / x infinite, 0 / x and x / inf zero; exponent field 0 is zero. The other generics
-- say how many cycles there are; doubleaccuracy and synthesize change nothing. README.md explains the digits.
--   step compare:  which significand is larger; b's inverse to eight bits; exponents; flags
--   step order:    the dividend, so that the quotient is from 1 to 2; the quotient's exponent
--   step scale:    dividend and divisor times b's inverse: rows
--   step near:     the sums, the divisor's near 1
--   step rows:     the next digit times the divisor, subtracted; eight digits, five bits and seven times seven
--   step rest:     what is left for the next digit
--   step decide:   what is kept, complemented for adders where it is negative; whether a unit comes on or off
--   step round:    one carry chain
--   step settle:   the fields; range and flags
-- Latency 21 + 4 * doublespeed - device * (1 + 2 * doublespeed) + roundconvert * (1 + doublespeed) cycles with
-- ieeeoutput, 20 + 4 * doublespeed - device * (1 + 2 * doublespeed) with divoutput and as many with xoutput, but one
-- more with roundconvert and doublespeed; 18 to 27. Registers are behind order, near, all rows but the last one, all
-- rests and settle; with more cycles also behind the last rows, scale, decide, round, compare, in this order, and what
-- there is above 23 stands behind settle.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divfp2x is
  generic (ieeeoutput : natural; xoutput : natural; divoutput : natural; roundconvert : natural;
           doublespeed : natural; doubleaccuracy : natural; device : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(67 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(67 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(67 + 10 * xoutput - 3 * ieeeoutput downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_divfp2x;

architecture rtl of xfc_divfp2x is
  constant exponent_bits  : positive := 13;
  constant wide_bits      : positive := exponent_bits + 2;         -- two's complement
  constant bias           : positive := 1023;
  constant fraction_bits  : positive := 52;
  constant mantissa       : positive := fraction_bits + 2;         -- sign, hidden one, fraction
  constant adder_mantissa : positive := 64;
  constant guard_bits     : positive := 4;                         -- of the adder form
  constant ieee_exponent  : positive := 11;
  constant digits         : positive := 8;
  constant point          : positive := 61;                        -- bits behind it, of what is scaled
  constant quotient_bits  : positive := 55;                        -- 1, and 54 bits behind the point
  constant kept_bits      : positive := fraction_bits + xoutput * (quotient_bits - fraction_bits);
  constant family         : natural := device * (1 + 2 * doublespeed);
  constant latency        : positive :=
    20 + 4 * doublespeed - family + ieeeoutput * (1 + roundconvert * (1 + doublespeed)) +
    xoutput * roundconvert * doublespeed;
  constant last_border    : natural := boolean'pos(latency >= 19);
  constant scale_border   : natural := boolean'pos(latency >= 20);
  constant decide_border  : natural := boolean'pos(latency >= 21);
  constant round_border   : natural := boolean'pos(latency >= 22);
  constant compare_border : natural := boolean'pos(latency >= 23);
  constant more_borders   : natural := boolean'pos(latency >= 24) + boolean'pos(latency >= 25) +
                                       boolean'pos(latency >= 26) + boolean'pos(latency >= 27);
  constant aside_borders  : positive := scale_border + 2 * digits + last_border;

  function shift_of(known : positive) return positive is
  begin
    if known = 1 then return 5; else return 7; end if;
  end shift_of;
  function border_behind_rows(known : positive) return natural is
  begin
    if known = digits then return last_border; else return 1; end if;
  end border_behind_rows;

  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);              -- sign, nan, zip, sat
  subtype row_field is std_logic_vector(8 downto 0);
  subtype scaled_field is std_logic_vector(point downto 0);
  subtype remainder_field is std_logic_vector(point + 2 downto 0);
  subtype quotient_field is std_logic_vector(quotient_bits - 1 downto 0);
  subtype kept_field is std_logic_vector(kept_bits - 1 downto 0);
  -- What is known in front of the first digit and behind each.
  type divisor_array is array (0 to digits) of scaled_field;
  type remainder_array is array (0 to digits) of remainder_field;
  type code_array is array (0 to digits) of row_field;
  type quotient_array is array (0 to digits) of quotient_field;

  -- compare
  signal a_exponent, b_exponent : unsigned(exponent_bits - 1 downto 0);
  signal a_fraction_d, b_fraction_d, a_fraction, b_fraction : fraction_field;
  signal less_d, less : std_logic_vector(0 downto 0);
  signal row_d, compare_row : row_field;
  signal exponents_d, exponents : std_logic_vector(exponent_bits downto 0);   -- two's complement
  signal a_zero, b_zero, nan, sat, zip, sign : std_logic;
  signal compare_marks_d, compare_marks : mark_field;

  -- order
  signal dividend_d, dividend, divisor : std_logic_vector(fraction_bits + 1 downto 0);
  signal divisor_fraction : fraction_field;
  signal row : row_field;
  signal exponent_d, order_exponent, exponent : wide_exponent;
  signal order_marks, marks : mark_field;

  -- scale, near
  signal scaled_dividend_d, scaled_divisor_d : std_logic_vector(point + 1 downto 0);
  signal first_floor : std_logic_vector(7 downto 0);
  signal first_codes_d : row_field;
  signal first_remainder_d : remainder_field;

  -- rows, rest
  signal divisors : divisor_array;
  signal remainders : remainder_array;
  signal codes : code_array;
  signal quotients : quotient_array;

  -- decide
  signal quotient : quotient_field;
  signal below : std_logic;
  signal kept_d, kept : kept_field;
  signal changes_d, changes : std_logic_vector(2 downto 0);        -- up, down, lost
  signal decide_exponent : wide_exponent;
  signal decide_marks : mark_field;

  -- round
  signal addend, rounded_d, rounded : kept_field;
  signal sticky : std_logic_vector(0 downto 0);
  signal last_exponent : wide_exponent;
  signal last_marks : mark_field;
begin
  assert ieeeoutput + xoutput + divoutput = 1 report "xfc_divfp2x: one output is 1" severity failure;
  assert roundconvert <= 1 report "xfc_divfp2x: roundconvert is 0 or 1" severity failure;
  assert doublespeed <= 1 report "xfc_divfp2x: doublespeed is 0 or 1" severity failure;
  assert doubleaccuracy <= 1 report "xfc_divfp2x: doubleaccuracy is 0 or 1" severity failure;
  assert device <= 2 report "xfc_divfp2x: device is 0 to 2" severity failure;
  assert synthesize <= 1 report "xfc_divfp2x: synthesize is 0 or 1" severity failure;

  -- compare
  a_exponent <= unsigned(aa(exponent_bits downto 1));
  b_exponent <= unsigned(bb(exponent_bits downto 1));
  a_fraction_d <= aa(fraction_bits + exponent_bits downto exponent_bits + 1);
  b_fraction_d <= bb(fraction_bits + exponent_bits downto exponent_bits + 1);
  less_d <= "1" when unsigned(a_fraction_d) < unsigned(b_fraction_d) else "0";
  inverse : entity work.xfc_divfp2x_table port map (b_fraction_d(fraction_bits - 1 downto fraction_bits - 8), row_d);
  exponents_d <= std_logic_vector(resize(a_exponent, exponent_bits + 1) - b_exponent);
  a_zero <= '1' when aazip = '1' or a_exponent = 0 else '0';
  b_zero <= '1' when bbzip = '1' or b_exponent = 0 else '0';
  nan <= aanan or bbnan or (aasat and bbsat) or (not aasat and not bbsat and a_zero and b_zero);
  sat <= not nan and (aasat or (b_zero and not bbsat));
  zip <= not nan and not sat and (a_zero or bbsat);
  sign <= aa(mantissa + exponent_bits) xor bb(mantissa + exponent_bits);
  compare_marks_d <= sign & nan & zip & sat;

  compare_0 : entity work.xfc_register generic map (fraction_bits, compare_border)
    port map (sysclk, enable, a_fraction_d, a_fraction);
  compare_1 : entity work.xfc_register generic map (fraction_bits, compare_border)
    port map (sysclk, enable, b_fraction_d, b_fraction);
  compare_2 : entity work.xfc_register generic map (1, compare_border) port map (sysclk, enable, less_d, less);
  compare_3 : entity work.xfc_register generic map (9, compare_border) port map (sysclk, enable, row_d, compare_row);
  compare_4 : entity work.xfc_register generic map (exponent_bits + 1, compare_border)
    port map (sysclk, enable, exponents_d, exponents);
  compare_5 : entity work.xfc_register generic map (4, compare_border)
    port map (sysclk, enable, compare_marks_d, compare_marks);

  -- order
  dividend_d <= '1' & a_fraction & '0' when less = "1" else "01" & a_fraction;
  exponent_d <= std_logic_vector(unsigned(resize(signed(exponents), wide_bits)) + bias - unsigned(less));

  order_0 : entity work.xfc_register generic map (fraction_bits + 2, 1) port map (sysclk, enable, dividend_d, dividend);
  order_1 : entity work.xfc_register generic map (fraction_bits, 1)
    port map (sysclk, enable, b_fraction, divisor_fraction);
  order_2 : entity work.xfc_register generic map (9, 1) port map (sysclk, enable, compare_row, row);
  order_3 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, exponent_d, order_exponent);
  order_4 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, compare_marks, order_marks);
  aside_0 : entity work.xfc_registers generic map (wide_bits, aside_borders)
    port map (sysclk, enable, order_exponent, exponent);
  aside_1 : entity work.xfc_registers generic map (4, aside_borders) port map (sysclk, enable, order_marks, marks);

  -- scale, near
  divisor <= "01" & divisor_fraction;
  scale_dividend : entity work.xfc_divfp2x_scale generic map (scale_border)
    port map (sysclk, enable, dividend, row, scaled_dividend_d);
  scale_divisor : entity work.xfc_divfp2x_scale generic map (scale_border)
    port map (sysclk, enable, divisor, row, scaled_divisor_d);
  first_floor <= '0' & scaled_dividend_d(point + 1 downto point - 5);
  first_digit : entity work.xfc_divfp2x_codes
    port map ('0', first_floor, scaled_dividend_d(point - 6), first_codes_d);
  first_remainder_d <= '0' & scaled_dividend_d;

  near_0 : entity work.xfc_register generic map (point + 1, 1)
    port map (sysclk, enable, scaled_divisor_d(point downto 0), divisors(0));
  near_1 : entity work.xfc_register generic map (point + 3, 1)
    port map (sysclk, enable, first_remainder_d, remainders(0));
  near_2 : entity work.xfc_register generic map (9, 1) port map (sysclk, enable, first_codes_d, codes(0));
  quotients(0) <= (others => '0');

  -- rows, rest: what is known in front of the first digit and behind each
  after_near : for known in 1 to digits generate
    next_digit : entity work.xfc_divfp2x_digit generic map (shift_of(known), border_behind_rows(known), 1)
      port map (sysclk, enable, divisors(known - 1), remainders(known - 1), codes(known - 1), quotients(known - 1),
                divisors(known), remainders(known), codes(known), quotients(known));
  end generate;

  -- decide: what is left says whether the quotient is more or less than its digits, or they are all of it
  quotient <= quotients(digits);
  below <= remainders(digits)(point);

  keep_for_adders : if xoutput = 1 generate
    signal lost : std_logic;
  begin
    lost <= '0' when unsigned(remainders(digits)(point downto 0)) = 0 else '1';
    kept_d <= not quotient when marks(3) = '1' else quotient;
    changes_d <= (marks(3) and (below or not lost)) & (not marks(3) and below) & lost;
  end generate;

  -- Nothing is halfway between two numbers.
  keep_for_others : if xoutput = 0 generate
    signal four : std_logic;
  begin
    kept_d <= quotient(fraction_bits + 1 downto 2);
    rounds : if ieeeoutput = 0 or roundconvert = 1 generate
      changes_d <= (quotient(1) and (quotient(0) or not below)) & "00";
    end generate;
    truncates : if ieeeoutput = 1 and roundconvert = 0 generate
      four <= '1' when quotient(1 downto 0) = "00" else '0';
      changes_d <= '0' & (below and four) & '0';
    end generate;
  end generate;

  decide_0 : entity work.xfc_register generic map (kept_bits, decide_border) port map (sysclk, enable, kept_d, kept);
  decide_1 : entity work.xfc_register generic map (3, decide_border) port map (sysclk, enable, changes_d, changes);
  decide_2 : entity work.xfc_register generic map (wide_bits, decide_border)
    port map (sysclk, enable, exponent, decide_exponent);
  decide_3 : entity work.xfc_register generic map (4, decide_border) port map (sysclk, enable, marks, decide_marks);

  -- round
  addend(kept_bits - 1 downto 1) <= (others => changes(1));
  addend(0) <= changes(2) or changes(1);
  rounded_d <= std_logic_vector(unsigned(kept) + unsigned(addend));

  round_0 : entity work.xfc_register generic map (kept_bits, round_border)
    port map (sysclk, enable, rounded_d, rounded);
  round_1 : entity work.xfc_register generic map (1, round_border)
    port map (sysclk, enable, changes(0 downto 0), sticky);
  round_2 : entity work.xfc_register generic map (wide_bits, round_border)
    port map (sysclk, enable, decide_exponent, last_exponent);
  round_3 : entity work.xfc_register generic map (4, round_border)
    port map (sysclk, enable, decide_marks, last_marks);

  -- settle
  to_ieee : if ieeeoutput = 1 generate
    signal result_d : std_logic_vector(63 downto 0);
  begin
    pack : entity work.xfc_pack_ieee generic map (ieee_exponent, fraction_bits, wide_bits)
      port map (last_exponent, rounded, last_marks, result_d);

    settle_0 : entity work.xfc_registers generic map (64, 1 + more_borders) port map (sysclk, enable, result_d, cc);
    ccsat <= '0';
    cczip <= '0';
    ccnan <= '0';
  end generate;

  internal : if ieeeoutput = 0 generate
    constant result_bits : positive := mantissa + xoutput * (adder_mantissa - mantissa);
    constant value_bits  : positive := adder_mantissa - guard_bits - 1;
    signal marked, too_small, too_large : std_logic;
    signal flags_d, flags : std_logic_vector(2 downto 0);          -- nan, zip, sat
    signal mantissa_d : std_logic_vector(result_bits - 1 downto 0);
    signal result_d : std_logic_vector(result_bits + exponent_bits - 1 downto 0);
  begin
    marked <= last_marks(2) or last_marks(1) or last_marks(0);
    too_small <= '1' when signed(last_exponent) <= 0 else '0';
    too_large <= '1' when signed(last_exponent) >= 7680 else '0';
    flags_d <= last_marks(2) & (last_marks(1) or (too_small and not marked)) &
               (last_marks(0) or (too_large and not marked));

    for_adders : if xoutput = 1 generate
      mantissa_d(result_bits - 1 downto value_bits) <= (others => last_marks(3));
      mantissa_d(value_bits - 1 downto value_bits - quotient_bits) <= rounded;
      mantissa_d(value_bits - quotient_bits - 1) <= sticky(0);
      mantissa_d(value_bits - quotient_bits - 2 downto 0) <= (others => '0');
    end generate;

    for_others : if xoutput = 0 generate
      mantissa_d <= last_marks(3) & '1' & rounded;
    end generate;
    result_d <= mantissa_d & last_exponent(exponent_bits - 1 downto 0);

    settle_0 : entity work.xfc_registers generic map (result_bits + exponent_bits, 1 + more_borders)
      port map (sysclk, enable, result_d, cc);
    settle_1 : entity work.xfc_registers generic map (3, 1 + more_borders) port map (sysclk, enable, flags_d, flags);
    ccsat <= flags(0);
    cczip <= flags(1);
    ccnan <= flags(2);
  end generate;
end rtl;
