<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="7">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="8">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="9">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="10">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="11">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="12">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="13">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="14">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="15">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="16">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="17">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="18">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="19">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="20">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="21">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="22">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="23">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="24">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="25">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="26">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="27">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="28">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="29">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="30">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="31">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="32">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="33">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="34">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>24</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
