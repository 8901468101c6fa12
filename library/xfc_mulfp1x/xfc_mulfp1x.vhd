-- Multiplies two XFloat values in multiplier form (magnitudes from 1 to 2). The product is exact before it is brought
-- into the form of the output: rounded to nearest even as an IEEE single (ieeeoutput), or with its lost bits or'ed into
-- the lowest one in adder form (xoutput, from 1 to 4, or from 1 to 2 with outputscale), normalized in multiplier form
-- (multoutput) or in sign and magnitude (divoutput). inf * 0 is nan; exponent field 0 is zero.
--   step recode:  digits of bb; exponents; flags
--   step rows:    sums of four rows of the product
--   step sum:     the product
--   step settle:  internal outputs: shift, exponent, range
--   step decide:  IEEE output: ones' complement of a negative product, shift, whether to round up; its exponent and
--                 the next one, both with range and flags
--   step round:   IEEE output: one carry chain for rounding and the missing unit chooses between them
-- Latency 5 cycles with ieeeoutput, 3 + outputscale with xoutput, else 4: a register behind every step but sum, and
-- behind sum when there are more than 3.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_mulfp1x is
  generic (mantissa : positive; ieeeoutput : natural; xoutput : natural; multoutput : natural; divoutput : natural;
           outputscale : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 - ieeeoutput * (mantissa - 22) downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_mulfp1x;

architecture rtl of xfc_mulfp1x is
  constant exponent_bits : positive := 10;
  constant wide_bits     : positive := exponent_bits + 2;        -- two's complement
  constant bias          : positive := 127;
  constant fraction_bits : positive := 23;
  constant ieee_exponent : positive := 8;
  constant top           : positive := 2 * mantissa - 1;         -- sign of the product; below it 4, 2 and 1
  constant sum_border    : natural := 1 - xoutput * (1 - outputscale);

  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);
  subtype product_field is std_logic_vector(top downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);            -- sign, nan, zip, sat

  -- recode
  signal a_exponent, b_exponent : exponent_field;
  signal a_mantissa, b_mantissa : mantissa_field;
  signal a_zero, b_zero, sign, nan, sat, zip : std_logic;
  signal recode_marks_d, recode_marks : mark_field;
  signal both_exponents_d, both_exponents : std_logic_vector(exponent_bits downto 0);

  -- rows
  signal rows_exponent_d, rows_exponent : wide_exponent;
  signal rows_marks : mark_field;

  -- sum
  signal product_d, product : product_field;
  signal exponent : wide_exponent;
  signal marks : mark_field;
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_mulfp1x: mantissa is 32 or 36" severity failure;
  assert ieeeoutput + xoutput + multoutput + divoutput = 1 report "xfc_mulfp1x: one output is 1" severity failure;
  assert outputscale <= 1 report "xfc_mulfp1x: outputscale is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_mulfp1x: synthesize is 0 or 1" severity failure;

  -- recode
  a_exponent <= aa(exponent_bits downto 1);
  b_exponent <= bb(exponent_bits downto 1);
  a_mantissa <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  b_mantissa <= bb(mantissa + exponent_bits downto exponent_bits + 1);
  a_zero <= '1' when aasat = '0' and (aazip = '1' or unsigned(a_exponent) = 0) else '0';
  b_zero <= '1' when bbsat = '0' and (bbzip = '1' or unsigned(b_exponent) = 0) else '0';
  sign <= a_mantissa(mantissa - 1) xor b_mantissa(mantissa - 1);
  nan <= aanan or bbnan or (aasat and b_zero) or (a_zero and bbsat);
  sat <= not nan and (aasat or bbsat);
  zip <= not nan and not sat and (a_zero or b_zero);
  recode_marks_d <= sign & nan & zip & sat;
  both_exponents_d <= std_logic_vector(resize(unsigned(a_exponent), exponent_bits + 1) + unsigned(b_exponent));

  recode_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, recode_marks_d, recode_marks);
  recode_1 : entity work.xfc_register generic map (exponent_bits + 1, 1)
    port map (sysclk, enable, both_exponents_d, both_exponents);

  -- rows
  rows_exponent_d <= std_logic_vector(resize(unsigned(both_exponents), wide_bits) - bias);

  rows_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, recode_marks, rows_marks);
  rows_1 : entity work.xfc_register generic map (wide_bits, 1)
    port map (sysclk, enable, rows_exponent_d, rows_exponent);

  -- sum
  multiply : entity work.xfc_product generic map (mantissa, synthesize, 1, 1, 0)
    port map (sysclk, enable, a_mantissa, b_mantissa, product_d);

  sum_0 : entity work.xfc_register generic map (4, sum_border) port map (sysclk, enable, rows_marks, marks);
  sum_1 : entity work.xfc_register generic map (wide_bits, sum_border)
    port map (sysclk, enable, rows_exponent, exponent);
  sum_2 : entity work.xfc_register generic map (2 * mantissa, sum_border)
    port map (sysclk, enable, product_d, product);

  ieee_form : if ieeeoutput = 1 generate
    subtype packed_field is std_logic_vector(10 downto 0);
    constant low_bits : positive := top - 4 - fraction_bits;

    -- sum
    signal exponent_1, exponent_2 : wide_exponent;
    signal unshifted_d, halved_d, carried_d, unshifted, halved, carried : packed_field;

    -- decide
    signal magnitude : std_logic_vector(top downto low_bits);
    signal low_is_zero, low_bit, halve, up : std_logic;
    signal shifted, kept_d, kept : std_logic_vector(fraction_bits + 1 downto 0);
    signal dropped : std_logic_vector(2 downto 0);
    signal increment_d, increment : std_logic_vector(0 downto 0);
    signal packed_d, packed_number : packed_field;
    signal next_packed_d, next_packed : std_logic_vector(8 downto 0);

    -- round
    signal rounded : std_logic_vector(fraction_bits + 1 downto 0);
    signal result_d : std_logic_vector(31 downto 0);
  begin
    -- sum: the number's sign and exponent for each exponent that it may get, and which bits of its fraction count:
    -- the highest one, the others
    exponent_1 <= std_logic_vector(unsigned(rows_exponent) + 1);
    exponent_2 <= std_logic_vector(unsigned(rows_exponent) + 2);
    pack_unshifted : entity work.xfc_pack_ieee generic map (ieee_exponent, 2, wide_bits)
      port map (rows_exponent, "11", rows_marks, unshifted_d);
    pack_halved : entity work.xfc_pack_ieee generic map (ieee_exponent, 2, wide_bits)
      port map (exponent_1, "11", rows_marks, halved_d);
    pack_carried : entity work.xfc_pack_ieee generic map (ieee_exponent, 2, wide_bits)
      port map (exponent_2, "11", rows_marks, carried_d);
    sum_3 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, unshifted_d, unshifted);
    sum_4 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, halved_d, halved);
    sum_5 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, carried_d, carried);

    -- decide: the bits below the shift's reach are known by one that stands for them
    magnitude <= not product(top downto low_bits) when marks(3) = '1' else product(top downto low_bits);
    low_is_zero <= '1' when unsigned(product(low_bits - 1 downto 0)) = 0 else '0';
    low_bit <= not (marks(3) xor low_is_zero);
    halve <= magnitude(top - 1) or magnitude(top - 2);
    shifted <= magnitude(top - 1 downto low_bits + 2) when halve = '1' else magnitude(top - 2 downto low_bits + 1);
    -- nan has the highest bit of the fraction
    kept_d <= (shifted(fraction_bits + 1) and not marks(2)) & shifted(fraction_bits) &
              (shifted(fraction_bits - 1) or marks(2)) & shifted(fraction_bits - 2 downto 0);
    dropped <= magnitude(low_bits + 1 downto low_bits) & low_bit when halve = '1' else
               magnitude(low_bits) & low_bit & low_bit;
    round_even : entity work.xfc_round_even generic map (3) port map (shifted(0), dropped, marks(3), up);
    increment_d(0) <= up and not marks(2);
    packed_d <= halved when halve = '1' else unshifted;
    next_packed_d <= carried(10 downto 2) when halve = '1' else halved(10 downto 2);

    decide_0 : entity work.xfc_register generic map (fraction_bits + 2, 1) port map (sysclk, enable, kept_d, kept);
    decide_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, increment_d, increment);
    decide_2 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, packed_d, packed_number);
    decide_3 : entity work.xfc_register generic map (9, 1) port map (sysclk, enable, next_packed_d, next_packed);

    -- round: what is carried up to 2 has a fraction of zero
    rounded <= std_logic_vector(unsigned(kept) + unsigned(increment));
    result_d(31 downto fraction_bits) <=
      next_packed when rounded(fraction_bits + 1) = '1' else packed_number(10 downto 2);
    result_d(fraction_bits - 1) <= rounded(fraction_bits - 1) and packed_number(1);
    result_d(fraction_bits - 2 downto 0) <= rounded(fraction_bits - 2 downto 0) when packed_number(0) = '1' else
                                            (others => '0');

    round_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, result_d, cc);
    ccsat <= '0';
    cczip <= '0';
    ccnan <= '0';
  end generate;

  internal_form : if ieeeoutput = 0 generate
    -- settle
    signal settled, result_d : mantissa_field;
    signal next_exponent : wide_exponent;
    signal negative, marked, too_small, too_large : std_logic;
    signal result_flags_d, result_flags : std_logic_vector(2 downto 0);
  begin
    negative <= product(top);

    adder_form : if xoutput = 1 generate
      signal kept : std_logic_vector(mantissa - 3 downto 0);
      signal lost, two, exponent_is_zero : std_logic;
      signal halve : std_logic_vector(0 downto 0);
    begin
      lost <= '0' when unsigned(product(mantissa + 1 downto 0)) = 0 else '1';
      kept <= product(top downto mantissa + 3) & (product(mantissa + 2) or lost);
      two <= (negative xor product(top - 2)) or (not negative and product(top - 1));
      -- An exponent of 0 would be a zero.
      exponent_is_zero <= '1' when unsigned(exponent) = 0 else '0';
      halve(0) <= two when outputscale = 1 else exponent_is_zero;
      settled <= negative & negative & negative & kept(mantissa - 3 downto 2) & (kept(1) or kept(0))
                 when halve = "1" else negative & negative & kept;
      next_exponent <= std_logic_vector(unsigned(exponent) + unsigned(halve));
    end generate;

    normalized : if xoutput = 0 generate
      signal lost, converts, two, four, lowest : std_logic;
      signal increment : std_logic_vector(0 downto 0);
      signal value_before, value : std_logic_vector(mantissa downto 0);
      signal steps : std_logic_vector(1 downto 0);
    begin
      lost <= '0' when unsigned(product(mantissa - 3 downto 0)) = 0 else '1';
      converts <= negative when divoutput = 1 else '0';
      increment(0) <= converts and not lost;
      value_before <= not product(top - 1 downto mantissa - 2) when converts = '1' else
                      product(top - 1 downto mantissa - 2);
      value <= std_logic_vector(unsigned(value_before) + unsigned(increment));
      four <= value(mantissa) when divoutput = 1 else value(mantissa) and not negative;
      two <= value(mantissa - 1) or four when divoutput = 1 else (negative xor value(mantissa - 1)) or four;
      lowest <= value(0) or lost;
      settled <= negative & (value(mantissa - 1) or four) & value(mantissa - 2 downto 2) & (value(1) or lowest)
                 when two = '1' else negative & value(mantissa - 2 downto 1) & lowest;
      steps <= four & (two and not four);
      next_exponent <= std_logic_vector(unsigned(exponent) + unsigned(steps));
    end generate;

    marked <= marks(2) or marks(1) or marks(0);
    too_small <= '1' when signed(next_exponent) <= 0 else '0';
    too_large <= '1' when signed(next_exponent) >= 960 else '0';
    result_d(mantissa - 1) <= marks(3) when marked = '1' else settled(mantissa - 1);
    result_d(mantissa - 2 downto 0) <= settled(mantissa - 2 downto 0);
    result_flags_d <= marks(2) & (marks(1) or (too_small and not marked)) & (marks(0) or (too_large and not marked));

    settle_0 : entity work.xfc_register generic map (exponent_bits, 1)
      port map (sysclk, enable, next_exponent(exponent_bits - 1 downto 0), cc(exponent_bits downto 1));
    settle_1 : entity work.xfc_register generic map (mantissa, 1)
      port map (sysclk, enable, result_d, cc(cc'high downto exponent_bits + 1));
    settle_2 : entity work.xfc_register generic map (3, 1)
      port map (sysclk, enable, result_flags_d, result_flags);
    ccsat <= result_flags(0);
    cczip <= result_flags(1);
    ccnan <= result_flags(2);
  end generate;
end rtl;
